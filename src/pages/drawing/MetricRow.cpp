#include "pages/drawing/MetricRow.h"

#include "pages/drawing/FigureSentence.h"
#include "pages/drawing/Fill.h"

#include <QFontMetricsF>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double labelTracking = 1.2;
constexpr double valueGap = 6; ///< between label and value
constexpr double hairlineGap = 18;
constexpr double columnGap = hairlineGap + figure::hairline + hairlineGap;
constexpr double rowGap = 18;
/// A longer text has words enough in its beginning.
constexpr qsizetype measuredLetters = 200;

TextPart::Setting labelSetting(const DrawingTheme &theme) {
    TextPart::Setting setting = captionSetting(theme, labelTracking);
    setting.reading = TextPart::Reading::plain;
    return setting;
}

double widestWordOf(const QString &text, const QFont &font) {
    const QString beginning = text.left(measuredLetters);
    const QFontMetricsF metrics(font);
    QTextBoundaryFinder lineBreaks(QTextBoundaryFinder::Line, beginning);
    double widest = 0;
    for (qsizetype start = 0, end = lineBreaks.toNextBoundary(); end >= 0;
         start = end, end = lineBreaks.toNextBoundary()) {
        const QString word = beginning.sliced(start, end - start).trimmed();
        widest = std::max(widest, metrics.horizontalAdvance(word));
    }
    return std::ceil(widest);
}

} // namespace

MetricRow::MetricRow(const DrawingTheme &theme)
    : RowsView(theme, rowGap),
      m_labels(theme, labelSetting(theme)),
      m_values(theme, {.step = TextStep::value,
                       .reading = TextPart::Reading::plain,
                       .digits = TextPart::Digits::tabular}) {}

double MetricRow::take(const BlockContent &content) {
    const auto &[items, color] = std::get<block::Metric>(content);
    const qsizetype label = m_labels.setTexts(leftsOf(items));
    const qsizetype value = m_values.setTexts(rightsOf(items));
    m_values.setColor(theme().tint(color, theme().primary));
    m_names.resize(std::min(label, value));
    m_widestWords.resize(m_names.size());
    for (qsizetype metric = m_names.size(); metric < items.size(); ++metric) {
        m_names.append(items[metric].left.toString());
        m_widestWords.append(widestWord(metric));
    }
    return 0; // another metric moves all of them
}

double MetricRow::widestWord(qsizetype metric) const {
    return std::max(widestWordOf(m_labels[metric].text(), theme().font(TextStep::caption, labelTracking)),
                    widestWordOf(m_values[metric].text(), theme().font(TextStep::value)));
}

qsizetype MetricRow::columnsIn(double width) const {
    const double widest = *std::max_element(m_widestWords.begin(), m_widestWords.end());
    const auto room = qsizetype((width + columnGap) / (std::min(widest, width) + columnGap));
    const qsizetype most = std::clamp<qsizetype>(room, 1, m_labels.size());
    const qsizetype rows = (m_labels.size() + most - 1) / most;
    return (m_labels.size() + rows - 1) / rows;
}

qsizetype MetricRow::rowsIn(double width) {
    if (m_labels.size() == 0)
        return 0;
    m_columns = columnsIn(width);
    m_columnWidth = std::floor((width + columnGap) / double(m_columns) - columnGap);
    return (m_labels.size() + m_columns - 1) / m_columns;
}

double MetricRow::placeRow(qsizetype row, double top, double) {
    double height = 0;
    for (qsizetype metric = row * m_columns; metric < endOf(row); ++metric)
        height = std::max(height, placeMetric(metric, top));
    return height;
}

double MetricRow::placeMetric(qsizetype metric, double top) {
    const double labelHeight = m_labels[metric].layIn(m_columnWidth);
    m_labels[metric].moveTo({leftOf(metric), top});
    m_values[metric].moveTo({leftOf(metric), top + labelHeight + valueGap});
    return labelHeight + valueGap + m_values[metric].layIn(m_columnWidth);
}

void MetricRow::drawRow(QPainter &painter, qsizetype row, const QRectF &area) const {
    for (qsizetype metric = row * m_columns + 1; metric < endOf(row); ++metric) {
        const double left = leftOf(metric) - hairlineGap - figure::hairline;
        fill(painter, {left, area.top(), figure::hairline, area.height()},
             theme().shade(figure::hairlineOpacity));
    }
}

void MetricRow::listTexts(TextParts &texts) const {
    for (qsizetype metric = 0; metric < m_labels.size(); ++metric)
        texts.insert(texts.end(), {&m_labels[metric], &m_values[metric]});
}

double MetricRow::leftOf(qsizetype metric) const {
    return double(metric % m_columns) * (m_columnWidth + columnGap);
}

qsizetype MetricRow::endOf(qsizetype row) const {
    return std::min((row + 1) * m_columns, m_labels.size());
}

SpokenPart MetricRow::spoken() const {
    const QString sentence = figureSentence(u"Metrics"_s, m_names.size(), [this](qsizetype metric) {
        return (m_names[metric] + u' ' + m_values[metric].text()).trimmed();
    });
    return {.role = QAccessible::Graphic, .name = sentence, .area = {0, 0, width(), height()}};
}
