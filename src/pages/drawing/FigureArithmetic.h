#pragma once

#include <QList>
#include <QPointF>
#include <QSizeF>
#include <QStringList>

/// The numbers of the charts as shares of what they are drawn in. Every double gives a picture: what is
/// not a number counts as zero, and what is infinite as the largest number there is. Any thread.
namespace figure {

/// What stands for the whole height of a plot, and for the whole width of a bar's field: the largest
/// number, but at least 1.
double scaleOf(const QList<double> &values);

/// How much of its field a bar takes, from 0 to 1. A negative number has no bar.
double barShare(double value, double scale);

/// Where the number at `index` of `count` stands in a plot, whose origin is at the top left. A negative
/// number stands below the plot.
QPointF plotPoint(qsizetype index, qsizetype count, double value, double scale, const QSizeF &plot);

/// The points that a line through all of them is seen by. Of many that stand in the same column of pixels
/// these are the first and the last, the highest and the lowest.
QList<QPointF> thinned(const QList<QPointF> &points);

/// A part of a ring, in parts of the circle from 0 to 1, clockwise from the top.
struct Slice {
    double from = 0;
    double to = 0; ///< before `from` for a negative number, which shows nothing

    bool operator==(const Slice &) const = default;
};

/// One for each number. The whole is the sum of the numbers, but at least 1, so the ring may stay open.
QList<Slice> slicesOf(const QList<double> &values);

/// The share of each number in that whole, in whole percent: "12%".
QStringList sharesOf(const QList<double> &values);

/// A number that says percent, from 0 to 100.
double percentage(double value);

/// "34%" for 33.5.
QString printedPercentage(double value);

} // namespace figure
