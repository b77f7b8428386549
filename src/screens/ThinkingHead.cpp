#include "screens/ThinkingHead.h"

#include "screens/Icon.h"
#include "screens/Style.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

double angleOf(ThinkingStage stage) {
    switch (stage) {
    case ThinkingStage::hidden:
        return -90;
    case ThinkingStage::box:
        return 0;
    case ThinkingStage::expanded:
        return 180;
    }
    Q_UNREACHABLE();
}

QString toolTipOf(ThinkingStage stage) {
    switch (stage) {
    case ThinkingStage::hidden:
        return u"Show the thinking"_s;
    case ThinkingStage::box:
        return u"Hide the thinking"_s;
    case ThinkingStage::expanded:
        return u"Back to the five-line box"_s;
    }
    Q_UNREACHABLE();
}

} // namespace

ThinkingHead::ThinkingHead(const Look &look, QWidget *parent)
    : BorderlessButton(look, u"Thinking"_s, parent),
      m_angle(style::thinkingFold) {
    setToolTip(toolTipOf(m_stage));
    connect(&m_angle, &Glide::moved, this, qOverload<>(&QWidget::update));
}

void ThinkingHead::setStage(ThinkingStage stage) {
    m_stage = stage;
    setToolTip(toolTipOf(stage));
    m_angle.go(m_angle.value(), angleOf(stage), look().motion());
    tellFold(this);
}

QSize ThinkingHead::sizeHint() const {
    return BorderlessButton::sizeHint() + QSize(style::chevron + style::spaceTiny, 0);
}

Spoken::Fold ThinkingHead::spokenFold() const {
    return m_stage == ThinkingStage::hidden ? Fold::folded : Fold::unfolded;
}

void ThinkingHead::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const Palette &palette = look().palette();
    const QColor ink = byState(palette.secondaryInk(), palette.ink, palette.secondaryInk());
    const QRectF sign(style::rowOutset, (height() - style::chevron) / 2.0, style::chevron, style::chevron);
    painter.save();
    painter.translate(sign.center());
    painter.rotate(m_angle.value());
    drawIcon(painter, Icon::chevron, sign.translated(-sign.center()), ink);
    painter.restore();
    painter.setFont(look().font(TextStyle::callout));
    painter.setPen(ink);
    painter.drawText(rect().adjusted(int(sign.right()) + style::spaceTiny, 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter, text());
    drawFocusRing(painter, rect(), style::radiusMark);
}
