#include "screens/StatusDot.h"

#include "screens/Look.h"

#include <QPainter>

#include <cmath>
#include <numbers>

namespace {

constexpr double haloOpacity = 0.28;
constexpr double smallestHalo = 0.55;

} // namespace

StatusDot::StatusDot(const Look &look, QWidget *parent) : MovingWidget(look, parent) {
    Spoken::install();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void StatusDot::setLamp(const StatusLamp &lamp) {
    if (m_lamp == lamp)
        return;
    m_lamp = lamp;
    setToolTip(lamp.accessibleText);
    setHasMotion(lamp.light == StatusLamp::Light::pulsing);
    update();
    QAccessibleEvent renamed(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&renamed);
}

QColor StatusDot::color() const {
    const Palette &palette = look().palette();
    switch (m_lamp.color) {
    case StatusLamp::Color::quiet:
        return palette.secondaryInk();
    case StatusLamp::Color::waking:
        return palette.waking();
    case StatusLamp::Color::good:
        return palette.good();
    case StatusLamp::Color::bad:
        return palette.bad();
    }
    Q_UNREACHABLE();
}

QSize StatusDot::sizeHint() const {
    return {style::lampArea, style::lampArea};
}

void StatusDot::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QPointF centre = QRectF(rect()).center();
    const auto disc = [&](double diameter, const QColor &color) {
        painter.setBrush(color);
        painter.drawEllipse(centre, diameter / 2, diameter / 2);
    };
    const double turn = double(motionTime().count()) / double(style::lampPulse.count());
    const double swell = (1 + std::cos(2 * std::numbers::pi * turn)) / 2;
    disc(style::lampHalo * (smallestHalo + (1 - smallestHalo) * swell), withOpacity(color(), haloOpacity));
    disc(style::lamp, color());
}
