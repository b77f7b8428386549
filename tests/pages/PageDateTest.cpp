#include "pages/PageDate.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(PageDate, aDateIsShownInEnglish) {
    const QDateTime date(QDate(2026, 11, 5), QTime(13, 8));
    EXPECT_EQ(shownDate(date), u"Nov 5, 2026"_s);
    EXPECT_EQ(shownDateAndTime(date), u"Nov 5, 2026 at 1:08 PM"_s);
    EXPECT_EQ(shownDateAndTime(QDateTime(QDate(2026, 1, 31), QTime(0, 0))), u"Jan 31, 2026 at 12:00 AM"_s);
}

TEST(PageDate, itIsThatOfThePlaceWhereTheProgramRuns) {
    const QDateTime date(QDate(2026, 11, 5), QTime(0, 30));
    EXPECT_EQ(shownDateAndTime(date.toUTC()), shownDateAndTime(date));
}
