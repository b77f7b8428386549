#include "screens/PageCardButton.h"

#include "screens/Look.h"
#include "screens/ShownTitle.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QPainter>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// The rows of the page in small, as shares of the width: two paragraphs.
constexpr std::array rows{1.0, 0.94, 0.98, 0.62, 0.96, 0.9, 0.55};
constexpr double headOpacity = 0.18;
constexpr double rowOpacity = 0.08;
constexpr double edgeOpacity = 0.15;

} // namespace

// The button itself has no text: an ampersand in it would be a key to press.
PageCardButton::PageCardButton(const Look &look, const QString &title, QWidget *parent)
    : RowButton(look, QString(), parent),
      m_title(shownTitle(title, u"Page")) {
    setAccessibleName(m_title);
    setAccessibleDescription(u"Open page"_s);
    setToolTip(u"Open page"_s);
}

QSize PageCardButton::sizeHint() const {
    const QFontMetrics metrics(look().font(TextStyle::callout));
    // Rounded up: a title that is a fraction too wide would be cut.
    const int advance = int(std::ceil(QFontMetricsF(metrics).horizontalAdvance(m_title)));
    const int title = std::min(advance, style::cardMaximumWidth);
    return {std::max(style::sheetWidthInSmall, title) + 2 * style::rowOutset,
            style::sheetHeightInSmall + style::spaceSmall + metrics.height() + 2 * style::rowOutset};
}

void PageCardButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawSheet(painter);
    const QRect title = rect().adjusted(style::rowOutset, 0, -style::rowOutset, -style::rowOutset);
    painter.setFont(look().font(TextStyle::callout));
    painter.setPen(look().palette().ink);
    painter.drawText(title, Qt::AlignLeft | Qt::AlignBottom,
                     painter.fontMetrics().elidedText(m_title, Qt::ElideRight, title.width()));
    drawFocusRing(painter, rect(), style::radiusButton);
}

void PageCardButton::drawSheet(QPainter &painter) const {
    const QRectF sheet(style::rowOutset, style::rowOutset, style::sheetWidthInSmall,
                       style::sheetHeightInSmall);
    const double half = style::hairline / 2.0;
    const double lively = underMouse() ? 2 : 1;
    painter.setPen(QPen(withOpacity(look().palette().ink, lively * edgeOpacity), style::hairline));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(sheet.adjusted(half, half, -half, -half), style::radiusSheetInSmall,
                            style::radiusSheetInSmall);
    painter.setPen(Qt::NoPen);
    const QRectF inside = sheet.adjusted(style::sheetPaddingInSmall, style::sheetPaddingInSmall,
                                         -style::sheetPaddingInSmall, -style::sheetPaddingInSmall);
    const auto drawBar = [&](double top, double width, double height, double opacity) {
        painter.setBrush(withOpacity(Qt::black, opacity));
        painter.drawRoundedRect(QRectF(inside.left(), top, width, height), height / 2, height / 2);
    };
    double top = inside.top();
    drawBar(top, style::sheetHeadWidth, style::sheetHeadHeight, headOpacity);
    top += style::sheetHeadHeight;
    for (const double share : rows) {
        top += style::sheetRowGap;
        drawBar(top, share * inside.width(), style::sheetRowHeight, rowOpacity);
        top += style::sheetRowHeight;
    }
}
