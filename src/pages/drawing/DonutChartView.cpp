#include "pages/drawing/DonutChartView.h"

#include "pages/drawing/ColorOf.h"
#include "pages/drawing/Fill.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double ringSize = 132;
constexpr double stroke = 14;
constexpr double groundOpacity = 0.08;
constexpr double legendGap = 24;
constexpr double rowSpacing = 10;
constexpr double swatchSize = 8;
constexpr double labelLeft = 2 * swatchSize; ///< from the swatch's left edge

/// The share of the circle that is a quarter of a pixel long. What is less is drawn with the next slice, so
/// that a ring of ten thousand is no more work than can be seen.
constexpr double leastSlice = 0.25 / (3.1416 * (ringSize - stroke));

QPainterPath arcOf(const QRectF &circle, const figure::Slice &slice) {
    constexpr double top = 90;
    constexpr double turn = -360; // the toolkit counts against the clock
    QPainterPath arc;
    arc.arcMoveTo(circle, top + slice.from * turn);
    arc.arcTo(circle, top + slice.from * turn, (slice.to - slice.from) * turn);
    return arc;
}

QPen penOf(const QColor &color) {
    return {color, stroke, Qt::SolidLine, Qt::FlatCap};
}

} // namespace

double DonutChartView::take(const BlockContent &content) {
    const auto &donut = std::get<block::Donut>(content);
    m_color = donut.color;
    const QList<double> values = valuesOf(donut.items);
    m_slices = figure::slicesOf(values);
    m_legend.setLines(labelsOf(donut.items), figure::sharesOf(values));
    return 0; // every slice depends on every number
}

double DonutChartView::arrange(double width) {
    const double legendHeight = placeLegend(0, width);
    const double height = std::max(legendHeight, ringSize);
    placeLegend(std::floor((height - legendHeight) / 2), width);
    return height;
}

double DonutChartView::placeLegend(double top, double width) {
    const double left = ringSize + legendGap + labelLeft;
    double next = top;
    for (qsizetype line = 0; line < m_legend.size(); ++line)
        next += m_legend.place(line, {left, next}, std::max(width - left, 0.0)) + rowSpacing;
    return std::max(next - rowSpacing - top, 0.0);
}

void DonutChartView::drawFigure(QPainter &painter, const QRectF &clip) const {
    if (ring().intersects(clip))
        drawRing(painter);
    drawSwatches(painter, clip);
}

void DonutChartView::drawRing(QPainter &painter) const {
    const QRectF circle = ring().adjusted(stroke / 2, stroke / 2, -stroke / 2, -stroke / 2);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(penOf(theme().shade(groundOpacity)));
    painter.drawEllipse(circle);
    double drawn = 0;
    for (qsizetype index = 0; index < m_slices.size(); ++index) {
        const figure::Slice &slice = m_slices[index];
        drawn = std::min(drawn, slice.from);
        if (slice.to - drawn < leastSlice)
            continue;
        painter.setPen(penOf(colorOf(seriesColor(index, m_color))));
        painter.drawPath(arcOf(circle, {drawn, slice.to}));
        drawn = slice.to;
    }
}

void DonutChartView::drawSwatches(QPainter &painter, const QRectF &clip) const {
    for (qsizetype index = 0; index < m_legend.size(); ++index) {
        const double middle = std::round(m_legend.numberArea(index).center().y());
        const QRectF swatch(ringSize + legendGap, middle - swatchSize / 2, swatchSize, swatchSize);
        if (swatch.intersects(clip))
            fill(painter, swatch, colorOf(seriesColor(index, m_color)));
    }
}

QRectF DonutChartView::ring() const {
    return {0, std::floor((height() - ringSize) / 2), ringSize, ringSize};
}

SpokenPart DonutChartView::spoken() const {
    return {.role = QAccessible::Graphic,
            .name = m_legend.sentence(u"Donut chart"_s),
            .area = {0, 0, width(), height()}};
}
