#include "pages/drawing/FigureArithmetic.h"

#include "pages/ChartNumber.h"

#include <algorithm>
#include <cmath>

namespace {

/// Small enough for the sum of a list of them to be finite.
constexpr double largest = 1e300;

/// How many times its height a plot's line may leave it. Beyond that a line is as good as upright, and
/// no painter needs to reckon with it.
constexpr double reach = 1000;

double drawable(double value) {
    return std::isnan(value) ? 0 : std::clamp(value, -largest, largest);
}

double wholeOf(const figure::Numbers &items) {
    double sum = 0;
    for (const LabelledNumber &item : items)
        sum += drawable(item.value);
    return std::max(sum, 1.0);
}

/// formatChartValue() takes what no integer can hold.
QString printedWhole(double value) {
    return formatChartValue(std::round(value)) + u'%';
}

} // namespace

double figure::scaleOf(const Numbers &items) {
    double scale = 1;
    for (const LabelledNumber &item : items)
        scale = std::max(scale, drawable(item.value));
    return scale;
}

double figure::barShare(double value, double scale) {
    return std::clamp(drawable(value) / scale, 0.0, 1.0);
}

QPointF figure::plotPoint(qsizetype index, qsizetype count, double value, double scale, const QSizeF &plot) {
    const double x = count < 2 ? 0 : double(index) * plot.width() / double(count - 1);
    const double share = std::clamp(drawable(value) / scale, -reach, 1.0);
    return {x, plot.height() - plot.height() * share};
}

QList<figure::Slice> figure::slicesOf(const Numbers &items) {
    const double whole = wholeOf(items);
    QList<Slice> slices;
    slices.reserve(items.size());
    double sum = 0;
    for (const LabelledNumber &item : items) {
        const double before = sum;
        sum += drawable(item.value);
        slices.append({std::clamp(before / whole, 0.0, 1.0), std::clamp(sum / whole, 0.0, 1.0)});
    }
    return slices;
}

QStringList figure::sharesOf(const Numbers &items) {
    const double whole = wholeOf(items);
    QStringList shares;
    shares.reserve(items.size());
    for (const LabelledNumber &item : items)
        shares.append(printedWhole(drawable(item.value) / whole * 100));
    return shares;
}

double figure::percentage(double value) {
    return std::isnan(value) ? 0 : std::clamp(value, 0.0, 100.0);
}

QString figure::printedPercentage(double value) {
    return printedWhole(percentage(value));
}
