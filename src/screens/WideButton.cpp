#include "screens/WideButton.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace {
constexpr int beforeWord = style::chatRowPadding + style::iconSize + style::spaceSmall;
}

WideButton::WideButton(const Look &look, Icon icon, const QString &word, QWidget *parent)
    : LookButton(look, word, parent),
      m_icon(icon) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize WideButton::sizeHint() const {
    const QFontMetrics metrics(look().font(TextStyle::callout));
    return {beforeWord + metrics.horizontalAdvance(text()) + style::chatRowPadding,
            std::max(style::wideButtonHeight, metrics.height() + style::spaceSmall)};
}

void WideButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = look().palette();
    painter.setPen(Qt::NoPen);
    painter.setBrush(byState(palette.quietFill(), palette.livelyFill(), palette.pressedFill()));
    painter.drawRoundedRect(rect(), style::radiusButton, style::radiusButton);
    const auto placed = [this](const QRect &area) {
        return QStyle::visualRect(layoutDirection(), rect(), area);
    };
    drawIcon(
        painter, m_icon,
        placed({style::chatRowPadding, (height() - style::iconSize) / 2, style::iconSize, style::iconSize}),
        palette.ink);
    painter.setFont(look().font(TextStyle::callout));
    painter.setPen(palette.ink);
    painter.drawText(placed(rect().adjusted(beforeWord, 0, 0, 0)),
                     int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter)),
                     text());
    drawFocusRing(painter, rect(), style::radiusButton);
}
