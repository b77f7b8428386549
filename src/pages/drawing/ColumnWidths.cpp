#include "pages/drawing/ColumnWidths.h"

#include <algorithm>
#include <numeric>

namespace {

/// The width that the widest columns are cut to, so that all together are as wide as `width`.
double commonLimit(QList<double> wanted, double width) {
    std::sort(wanted.begin(), wanted.end());
    double left = width;
    for (qsizetype index = 0; index < wanted.size(); ++index) {
        const double share = left / double(wanted.size() - index);
        if (wanted.at(index) > share)
            return share;
        left -= wanted.at(index);
    }
    return width;
}

/// The columns no wider than `width` together, without the gaps.
QList<double> fitted(QList<double> wanted, double width) {
    const double limit = commonLimit(wanted, width);
    for (double &column : wanted)
        column = std::min(column, limit);
    return wanted;
}

} // namespace

double ColumnBand::width(double gap) const {
    return std::accumulate(widths.begin(), widths.end(), gap * double(widths.size() - 1));
}

QList<ColumnBand> columnBands(const QList<double> &wanted, double width, double gap, double least) {
    QList<ColumnBand> bands;
    qsizetype first = 0;
    while (first < wanted.size()) {
        qsizetype end = first;
        double taken = -gap;
        while (end < wanted.size()) {
            taken += gap + std::min(wanted.at(end), least);
            if (taken > width && end > first)
                break;
            ++end;
        }
        const qsizetype count = end - first;
        const double room = std::max(width - gap * double(count - 1), 1.0);
        bands.append({first, fitted(wanted.mid(first, count), room)});
        first = end;
    }
    return bands;
}
