#include "screens/RowChange.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace {

QUuid idOf(int number) {
    return QUuid(uint(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

QList<MessageRowModel> rowsOf(const QList<int> &numbers) {
    QList<MessageRowModel> rows;
    for (const int number : numbers)
        rows.append({idOf(number), MessageRowModel::Kind::user, {}});
    return rows;
}

RowChange change(const QList<int> &before, const QList<int> &after) {
    return rowChange(rowsOf(before), rowsOf(after));
}

} // namespace

TEST(RowChangeTest, theSameRowsAreNoChange) {
    EXPECT_TRUE(change({}, {}).isNone());
    EXPECT_TRUE(change({1, 2}, {1, 2}).isNone());
}

TEST(RowChangeTest, aNewRowAtTheEndLeavesTheOthers) {
    EXPECT_EQ(change({1, 2}, {1, 2, 3}), (RowChange{2, 0, 1}));
}

TEST(RowChangeTest, aNoteOnTopLeavesTheOthers) {
    EXPECT_EQ(change({1, 2}, {9, 1, 2}), (RowChange{0, 0, 1}));
}

TEST(RowChangeTest, aRowMayGoOrGiveWay) {
    EXPECT_EQ(change({1, 2, 3}, {1, 3}), (RowChange{1, 1, 0}));
    EXPECT_EQ(change({1, 2, 3}, {1, 4, 3}), (RowChange{1, 1, 1}));
    EXPECT_EQ(change({1, 2}, {}), (RowChange{0, 2, 0}));
}

TEST(RowChangeTest, everyRowThatStoodIsFoundAtItsOldPlace) {
    QRandomGenerator random(7);
    for (int round = 0; round < 2000; ++round) {
        QList<int> before;
        for (int number = 1; number <= random.bounded(8); ++number)
            before.append(number);
        QList<int> after = before;
        const int cut = int(random.bounded(uint(after.size() + 1)));
        after.remove(cut, std::min<qsizetype>(random.bounded(3), after.size() - cut));
        for (int added = random.bounded(3); added > 0; --added)
            after.insert(cut, 100 + added);
        const RowChange result = change(before, after);
        for (int row = 0; row < after.size(); ++row) {
            const int place = result.placeBefore(row);
            if (place < 0) {
                ASSERT_TRUE(row >= result.first && row < result.first + result.added);
                continue;
            }
            ASSERT_EQ(before.at(place), after.at(row));
            ASSERT_EQ(result.placeNow(place), row);
        }
        ASSERT_EQ(before.size() - result.removed + result.added, after.size());
    }
}
