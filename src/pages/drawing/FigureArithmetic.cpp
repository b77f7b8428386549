#include "pages/drawing/FigureArithmetic.h"

#include "pages/ChartNumber.h"

#include <algorithm>
#include <cmath>

namespace {

/// Small enough for the sum of a list of them to be finite.
constexpr double largest = 1e300;

/// How many times its height a plot's line may leave it. Beyond that a line is as good as upright, and
/// no painter needs to reckon with it.
constexpr double depth = 1000;

double drawable(double value) {
    return std::isnan(value) ? 0 : std::clamp(value, -largest, largest);
}

double wholeOf(const QList<double> &values) {
    double sum = 0;
    for (const double value : values)
        sum += drawable(value);
    return std::max(sum, 1.0);
}

/// formatChartValue() takes what no integer can hold.
QString printedWhole(double value) {
    return formatChartValue(std::round(value)) + u'%';
}

} // namespace

double figure::scaleOf(const QList<double> &values) {
    double scale = 1;
    for (const double value : values)
        scale = std::max(scale, drawable(value));
    return scale;
}

double figure::barShare(double value, double scale) {
    return std::clamp(drawable(value) / scale, 0.0, 1.0);
}

QPointF figure::plotPoint(qsizetype index, qsizetype count, double value, double scale, const QSizeF &plot) {
    const double x = count < 2 ? 0 : double(index) * plot.width() / double(count - 1);
    const double share = std::clamp(drawable(value) / scale, -depth, 1.0);
    return {x, plot.height() - plot.height() * share};
}

QList<QPointF> figure::thinned(const QList<QPointF> &points) {
    const auto isAbove = [](const QPointF &one, const QPointF &other) { return one.y() < other.y(); };
    QList<QPointF> kept;
    for (auto first = points.begin(); first != points.end();) {
        const double column = std::floor(first->x());
        const auto end = std::find_if(first, points.end(),
                                      [column](const QPointF &point) { return point.x() >= column + 1; });
        const auto [top, bottom] = std::minmax_element(first, end, isAbove);
        for (auto point = first; point != end; ++point) {
            if (point == first || point == top || point == bottom || point == end - 1)
                kept.append(*point);
        }
        first = end;
    }
    return kept;
}

QList<figure::Slice> figure::slicesOf(const QList<double> &values) {
    const double whole = wholeOf(values);
    QList<Slice> slices;
    slices.reserve(values.size());
    double sum = 0;
    for (const double value : values) {
        const double before = sum;
        sum += drawable(value);
        slices.append({std::clamp(before / whole, 0.0, 1.0), std::clamp(sum / whole, 0.0, 1.0)});
    }
    return slices;
}

QStringList figure::sharesOf(const QList<double> &values) {
    const double whole = wholeOf(values);
    QStringList shares;
    shares.reserve(values.size());
    for (const double value : values)
        shares.append(printedWhole(drawable(value) / whole * 100));
    return shares;
}

double figure::percentage(double value) {
    return std::isnan(value) ? 0 : std::clamp(value, 0.0, 100.0);
}

QString figure::printedPercentage(double value) {
    return printedWhole(percentage(value));
}
