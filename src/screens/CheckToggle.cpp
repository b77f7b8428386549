#include "screens/CheckToggle.h"

#include "screens/Icon.h"
#include "screens/Style.h"

#include <QPainter>
#include <QScopedValueRollback>

namespace {

constexpr int ringRoom = style::focusRing + style::focusGap;
constexpr double inset = (style::switchHeight - style::switchThumb) / 2.0;

/// How much of a switch that can't be turned is to be seen.
constexpr double disabledOpacity = 0.4;

} // namespace

CheckToggle::CheckToggle(const Look &look, const QString &name, QWidget *parent)
    : LookButton(look, name, parent),
      m_on(style::switchGlide) {
    setCheckable(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&m_on, &Glide::moved, this, qOverload<>(&QWidget::update));
    connect(this, &QAbstractButton::toggled, this, &CheckToggle::takeState);
}

void CheckToggle::setOn(bool isOn) {
    const QScopedValueRollback following(m_isFollowing, true);
    setChecked(isOn);
}

void CheckToggle::takeState(bool isOn) {
    m_on.go(m_on.value(), isOn ? 1 : 0, isVisible() ? look().motion() : Motion::reduced);
    // A screen reader turns it without a click.
    if (!m_isFollowing)
        Q_EMIT turned(isOn);
}

QSize CheckToggle::sizeHint() const {
    return {style::switchWidth + 2 * ringRoom, style::switchHeight + 2 * ringRoom};
}

QRectF CheckToggle::box() const {
    return {(width() - style::switchWidth) / 2.0, (height() - style::switchHeight) / 2.0, style::switchWidth,
            style::switchHeight};
}

QRectF CheckToggle::thumb() const {
    const double share = isRightToLeft() ? 1 - m_on.value() : m_on.value();
    const double way = style::switchWidth - style::switchThumb - 2 * inset;
    return {box().left() + inset + share * way, box().top() + inset, style::switchThumb, style::switchThumb};
}

void CheckToggle::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = look().palette();
    const double on = m_on.value();
    const double opacity = isEnabled() ? 1 : disabledOpacity;
    painter.setOpacity(opacity);
    painter.setPen(Qt::NoPen);
    painter.setBrush(mixed(palette.switchOff(), palette.switchOn(), on));
    painter.drawRoundedRect(box(), style::switchHeight / 2.0, style::switchHeight / 2.0);
    painter.setBrush(palette.thumb());
    painter.drawEllipse(thumb());
    QRectF sign(0, 0, style::switchCheck, style::switchCheck);
    sign.moveCenter(thumb().center());
    painter.setOpacity(opacity * on);
    drawIcon(painter, Icon::check, sign, palette.onThumb());
    painter.setOpacity(1);
    drawFocusRing(painter, rect(), height() / 2.0);
}
