#include "screens/ProgressBar.h"

#include "screens/Style.h"

#include <QPainter>

namespace {
/// What a screen reader hears as the whole.
constexpr int whole = 1000;
} // namespace

ProgressBar::ProgressBar(const Look &look, const QString &name, QWidget *parent)
    : QProgressBar(parent),
      m_look(look),
      m_shown(style::progressGlide, QEasingCurve::Linear) {
    setAccessibleName(name);
    setRange(0, whole);
    setValue(0);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&m_shown, &Glide::moved, this, qOverload<>(&QWidget::update));
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void ProgressBar::setFraction(double fraction) {
    if (fraction == m_fraction)
        return;
    m_fraction = fraction;
    setValue(qRound(fraction * whole));
    m_shown.go(m_shown.value(), fraction, isVisible() ? m_look.motion() : Motion::reduced);
}

QSize ProgressBar::sizeHint() const {
    return {style::progressWidth, style::progressHeight};
}

void ProgressBar::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    constexpr double radius = style::progressHeight / 2.0;
    painter.setBrush(m_look.palette().groove());
    painter.drawRoundedRect(rect(), radius, radius);
    // The ends are round from the first byte on.
    const double length = m_shown.value() * (width() - height()) + height();
    painter.setBrush(m_look.palette().done());
    if (m_shown.value() > 0)
        painter.drawRoundedRect(QRectF(0, 0, length, height()), radius, radius);
}
