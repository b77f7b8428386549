#include "screens/Toast.h"

#include "platform/Clock.h"
#include "screens/Look.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QPainter>

namespace {
constexpr int wrapping = Qt::AlignCenter | Qt::TextWordWrap;
}

Toast::Toast(const Look &look, Clock &clock, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_clock(clock),
      m_opacity(style::toastFade) {
    Spoken::install();
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    connect(&m_opacity, &Glide::moved, this, qOverload<>(&QWidget::update));
    connect(&m_opacity, &Glide::arrived, this, [this] { setVisible(!m_text.isEmpty()); });
    connect(&look, &Look::changed, this, &Toast::place);
}

void Toast::showText(const QString &text) {
    m_text = text;
    place();
    raise();
    // A screen reader speaks a notification that begins to show.
    hide();
    show();
    m_opacity.go(m_opacity.value(), 1, m_look.motion());
    m_toastTask.start([this](std::stop_token stop) { return goLater(stop); });
}

Task<> Toast::goLater(std::stop_token stop) {
    co_await m_clock.sleep(style::toastTime, stop);
    if (stop.stop_requested())
        co_return;
    m_text.clear();
    m_opacity.go(m_opacity.value(), 0, m_look.motion());
}

void Toast::setAnchor(const QPoint &bottomCentre) {
    m_bottomCentre = bottomCentre;
    place();
}

QSize Toast::sizeHint() const {
    const QFontMetrics metrics(m_look.font(TextStyle::callout));
    const int widest = std::min(style::toastMaximumWidth, parentWidget()->width() - 2 * style::columnMargin) -
                       2 * style::toastPaddingX;
    const QRect room(0, 0, widest, parentWidget()->height());
    return metrics.boundingRect(room, wrapping, m_text).size() +
           QSize(2 * style::toastPaddingX, 2 * style::toastPaddingY);
}

void Toast::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(m_opacity.value());
    const Palette &palette = m_look.palette();
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.ink);
    const double radius = std::min(height() / 2.0, double(style::radiusBubble));
    painter.drawRoundedRect(rect(), radius, radius);
    painter.setFont(m_look.font(TextStyle::callout));
    painter.setPen(palette.background);
    painter.drawText(rect().adjusted(style::toastPaddingX, 0, -style::toastPaddingX, 0), wrapping, m_shown);
}

void Toast::place() {
    if (m_text.isEmpty())
        return;
    m_shown = m_text;
    QRect area({}, sizeHint());
    area.moveBottom(m_bottomCentre.y());
    area.moveLeft(m_bottomCentre.x() - area.width() / 2);
    setGeometry(area);
}
