#include "pages/drawing/LineChartView.h"

#include "pages/ChartNumber.h"
#include "pages/drawing/FigureArithmetic.h"
#include "pages/drawing/FigureSentence.h"
#include "pages/drawing/Fill.h"
#include "pages/drawing/TextList.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double plotHeight = 150;
constexpr double lineWidth = 2;
constexpr double dotRadius = figure::reach;
constexpr double baselineOpacity = 0.12;
constexpr double labelsGap = 8; ///< between the plot and the labels
constexpr double columnGap = 4;
constexpr double leastColumn = 4; ///< no letter has room in less

} // namespace

LineChartView::LineChartView(const DrawingTheme &theme)
    : BlockView(theme),
      m_font(theme.font(TextStep::caption2)) {}

double LineChartView::take(const BlockContent &content) {
    const auto &line = std::get<block::Line>(content);
    m_tint = theme().tint(line.color, theme().primary);
    m_values = valuesOf(line.items);
    m_labels.clear();
    for (const QStringView label : labelsOf(line.items))
        m_labels.append(label.toString());
    return -dotRadius; // every point depends on how many there are, and the highest stand out
}

double LineChartView::arrange(double width) {
    layPoints(width);
    layLabels(width);
    return m_labels.isEmpty() ? plotHeight : plotHeight + labelsGap + QFontMetricsF(m_font).height();
}

void LineChartView::layPoints(double width) {
    const double scale = figure::scaleOf(m_values);
    QList<QPointF> points;
    points.reserve(m_values.size());
    for (qsizetype index = 0; index < m_values.size(); ++index)
        points.append(figure::plotPoint(index, m_values.size(), m_values[index], scale, {width, plotHeight}));
    m_points = figure::thinned(points);
}

void LineChartView::layLabels(double width) {
    m_labelLines.clear();
    const double columns = double(m_labels.size());
    m_columnWidth = (width - (columns - 1) * columnGap) / columns;
    if (!(m_columnWidth >= leastColumn))
        return;
    for (const QString &label : m_labels)
        m_labelLines.emplace_back(label, m_font, m_columnWidth);
}

void LineChartView::drawFigure(QPainter &painter, const QRectF &clip) const {
    // A negative number, however large, is drawn over no other block.
    constexpr int reach = figure::reach;
    const QRectF bounds = QRectF(0, 0, width(), height()).adjusted(-reach, -reach, reach, reach);
    if (!bounds.intersects(clip))
        return;
    painter.setClipRect(bounds, Qt::IntersectClip);
    fill(painter, {0, plotHeight - 1, width(), 1}, theme().shade(baselineOpacity));
    drawLine(painter);
    drawLabels(painter);
}

void LineChartView::drawLine(QPainter &painter) const {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(m_tint, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(m_points.constData(), int(m_points.size()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_tint);
    for (const QPointF &point : m_points)
        painter.drawEllipse(point, dotRadius, dotRadius);
}

void LineChartView::drawLabels(QPainter &painter) const {
    painter.setPen(theme().secondary);
    const double baseline = std::round(plotHeight + labelsGap + QFontMetricsF(m_font).ascent());
    double middle = m_columnWidth / 2;
    for (const FittedLine &label : m_labelLines) {
        label.draw(painter, {middle, baseline});
        middle += m_columnWidth + columnGap;
    }
}

SpokenPart LineChartView::spoken() const {
    const QString sentence = figureSentence(u"Line chart"_s, m_labels.size(), [this](qsizetype index) {
        return m_labels[index] + u' ' + formatChartValue(m_values[index]);
    });
    return {.role = QAccessible::Graphic, .name = sentence, .area = {0, 0, width(), height()}};
}
