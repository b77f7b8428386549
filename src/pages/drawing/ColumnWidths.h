#pragma once

#include <QList>

/// How the columns of a table share the width that there is. Lengths are in device-independent pixels.

/// Some columns side by side, from left to right.
struct ColumnBand {
    qsizetype first = 0;
    QList<double> widths;

    /// From the left end of the first column to the right end of the last.
    double width(double gap) const;

    bool operator==(const ColumnBand &) const = default;
};

/// The columns of the widths `wanted`, with `gap` between each two, arranged in `width`. What is to spare
/// stays free, and what is missing is taken from the widest. Those that are no place for at `least` width
/// each go on in a further band, below.
QList<ColumnBand> columnBands(const QList<double> &wanted, double width, double gap, double least);
