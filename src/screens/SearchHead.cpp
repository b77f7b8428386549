#include "screens/SearchHead.h"

#include "screens/Icon.h"
#include "screens/Look.h"
#include "screens/Style.h"

#include <QPainter>

namespace {
constexpr double foldedAngle = -90;
}

SearchHead::SearchHead(const Look &look, const QString &line, bool canUnfold, QWidget *parent)
    : LineButton(look, line, parent),
      m_canUnfold(canUnfold),
      m_fold(style::thinkingFold) {
    connect(&m_fold, &Glide::moved, this, qOverload<>(&QWidget::update));
}

void SearchHead::setExpanded(bool isExpanded) {
    m_isExpanded = isExpanded;
    m_fold.go(m_fold.value(), isExpanded ? 1 : 0, look().motion());
    tellFold(this);
}

Spoken::Fold SearchHead::spokenFold() const {
    if (!m_canUnfold)
        return Fold::none;
    return m_isExpanded ? Fold::unfolded : Fold::folded;
}

int SearchHead::textLeft() const {
    return style::attachmentPaddingX + style::iconSize + style::attachmentSymbolGap;
}

int SearchHead::textRight() const {
    const int sign = m_canUnfold ? style::chevron + style::spaceTiny : 0;
    return style::attachmentPaddingX + sign;
}

void SearchHead::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const Palette &palette = look().palette();
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_canUnfold ? byState(palette.quietFill(), palette.livelyFill(), palette.pressedFill())
                                 : palette.quietFill());
    painter.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
    const double top = (height() - style::iconSize) / 2.0;
    drawIcon(painter, Icon::globe, QRectF(style::attachmentPaddingX, top, style::iconSize, style::iconSize),
             ink());
    drawLine(painter);
    if (m_canUnfold) {
        const QRectF sign(width() - style::attachmentPaddingX - style::chevron,
                          (height() - style::chevron) / 2.0, style::chevron, style::chevron);
        painter.translate(sign.center());
        painter.rotate(foldedAngle * (1 - m_fold.value()));
        drawIcon(painter, Icon::chevron, sign.translated(-sign.center()), ink());
        painter.resetTransform();
    }
    drawFocusRing(painter, rect(), height() / 2.0);
}
