#pragma once

#include "screens/MessageRowModel.h"

#include <QList>

/// How one list of rows became another: `removed` rows from `first` on gave way to `added` new ones; the
/// rows before and after are the same messages.
struct RowChange {
    int first = 0;
    int removed = 0;
    int added = 0;

    bool isNone() const { return removed == 0 && added == 0; }

    /// The old place of the row that stands at `row` now; -1 for a new row.
    int placeBefore(int row) const {
        if (row < first)
            return row;
        return row < first + added ? -1 : row - added + removed;
    }

    /// The new place of the row that stood at `row`; -1 for a removed row.
    int placeNow(int row) const {
        if (row < first)
            return row;
        return row < first + removed ? -1 : row - removed + added;
    }

    bool operator==(const RowChange &) const = default;
};

/// The smallest such change, by the messages' ids.
RowChange rowChange(const QList<MessageRowModel> &before, const QList<MessageRowModel> &after);
