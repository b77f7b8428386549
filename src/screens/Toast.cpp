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
      m_clock(clock) {
    Spoken::install();
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    m_opacity.setEasingCurve(QEasingCurve::InOutSine);
    m_opacity.setStartValue(0.0);
    m_opacity.setEndValue(0.0);
    connect(&m_opacity, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
    connect(&m_opacity, &QVariantAnimation::finished, this, [this] { setVisible(!m_text.isEmpty()); });
    connect(&look, &Look::changed, this, &Toast::place);
}

void Toast::showText(const QString &text) {
    m_text = text;
    place();
    raise();
    show();
    fade(1);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    m_toastTask = spawn([this](std::stop_token stop) { return goLater(stop); });
}

Task<> Toast::goLater(std::stop_token stop) {
    co_await m_clock.sleep(style::toastTime, stop);
    if (stop.stop_requested())
        co_return;
    m_text.clear();
    fade(0);
}

void Toast::setAnchor(const QPoint &bottomCentre) {
    m_bottomCentre = bottomCentre;
    place();
}

QSize Toast::sizeHint() const {
    const QFontMetrics metrics(m_look.font(TextStyle::callout));
    const QRect room(0, 0, style::toastMaximumWidth, parentWidget()->height());
    return metrics.boundingRect(room, wrapping, m_text).size() +
           QSize(2 * style::toastPaddingX, 2 * style::toastPaddingY);
}

void Toast::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(m_opacity.currentValue().toDouble());
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

void Toast::fade(double opacity) {
    const double now = m_opacity.currentValue().toDouble();
    m_opacity.stop();
    m_opacity.setStartValue(now);
    m_opacity.setEndValue(opacity);
    m_opacity.setDuration(m_look.motion() == Motion::reduced ? 0 : int(style::toastFade.count()));
    m_opacity.start();
}
