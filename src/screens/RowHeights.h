#pragma once

#include <QList>

/// Where the rows of a long list stand when only those in sight have been measured. The others have an
/// estimate until it is their turn. No widget, no thread of its own.
class RowHeights {
public:
    /// Space above the first and below the last row, and between two rows.
    RowHeights(int padding, int spacing) : m_padding(padding), m_spacing(spacing) {}

    int count() const { return int(m_rows.size()); }
    bool isMeasured(int row) const { return m_rows.at(row).isMeasured; }
    int height(int row) const { return m_rows.at(row).height; }
    int top(int row) const { return m_rows.at(row).top; }
    int bottom(int row) const { return top(row) + height(row); }

    /// The height of the whole list.
    int total() const;

    /// The row at that height: the last one whose top isn't below it, or the first; -1 in an empty list.
    int rowAt(int y) const;

    /// Puts rows with these estimates in the place of `removed` rows from `first` on.
    void replace(int first, int removed, const QList<int> &estimates);
    void measure(int row, int height);
    /// The row's height counts as an estimate from now on.
    void forget(int row);

private:
    struct Row {
        int top = 0;
        int height = 0;
        bool isMeasured = false;
    };

    void stack(int first);

    const int m_padding;
    const int m_spacing;
    QList<Row> m_rows;
};
