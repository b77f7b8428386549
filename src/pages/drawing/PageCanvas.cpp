#include "pages/drawing/PageCanvas.h"

#include "pages/PageDate.h"
#include "pages/drawing/Fill.h"

namespace {

constexpr int margin = 32;
constexpr int partGap = 18;
constexpr int barGap = 12;
constexpr int barWidth = 40;
constexpr int barHeight = 3;
constexpr double barOpacity = 0.8;
constexpr int footGap = 10;
constexpr double dateTracking = 1;

DrawingTheme themeOf(PageCanvas::Medium medium) {
    DrawingTheme theme = paperTheme();
    theme.showsButtons = medium == PageCanvas::Medium::screen;
    return theme;
}

} // namespace

PageCanvas::PageCanvas(const QString &title, const QString &markdown, int width,
                       const std::optional<QDateTime> &date, Medium medium)
    : MarkdownView(themeOf(medium)),
      m_title(theme(), {.step = TextStep::pageTitle, .reading = TextPart::Reading::plain}) {
    m_title.setText(title);
    const int textWidth = width - 2 * margin;
    const int foot = date ? layFoot(textWidth, *date) : 0;
    setMargins({margin, margin + layHead(textWidth) + partGap, margin, margin + foot});
    setText(markdown);
    layIn(width);
    if (m_date)
        m_date->moveTo({margin, height() - margin - m_date->height()});
}

int PageCanvas::layHead(int width) {
    m_title.moveTo({margin, margin});
    return int(m_title.layIn(width)) + barGap + barHeight;
}

int PageCanvas::layFoot(int width, const QDateTime &date) {
    m_date.emplace(theme(), captionSetting(theme(), dateTracking));
    m_date->setText(shownDate(date));
    return 2 * footGap + figure::hairline + int(m_date->layIn(width));
}

void PageCanvas::draw(QPainter &painter, const QRectF &clip, const TextSelection &selection) const {
    fill(painter, clip & QRectF({}, size()), Qt::white);
    m_title.draw(painter, clip);
    const QRectF bar(margin, m_title.area().bottom() + barGap, barWidth, barHeight);
    fill(painter, bar, theme().shade(barOpacity));
    MarkdownView::draw(painter, clip, selection);
    if (!m_date)
        return;
    const double line = m_date->area().top() - footGap - figure::hairline;
    fill(painter, QRectF(margin, line, m_date->area().width(), figure::hairline),
         theme().shade(figure::hairlineOpacity));
    m_date->draw(painter, clip);
}
