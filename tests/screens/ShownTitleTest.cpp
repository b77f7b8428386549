#include "screens/ShownTitle.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(ShownTitleTest, aTitleStandsOnOneLine) {
    EXPECT_EQ(shownTitle(u"Household budget"_s), u"Household budget"_s);
    EXPECT_EQ(shownTitle(u" Two\nlines\t "_s), u"Two lines"_s);
}

TEST(ShownTitleTest, whereThereIsNothingToSeeItIsANewChat) {
    for (const QString &title : {QString(), u"   "_s, u"\n\t"_s, u"\u00a0\u2003"_s, u"\u200b\u2060\ufeff"_s,
                                 u"\u202e"_s, u"\u0007"_s})
        EXPECT_EQ(shownTitle(title), u"New chat"_s);
}

TEST(ShownTitleTest, orWhatItIsToldToBe) {
    EXPECT_EQ(shownTitle(u"\u200b"_s, u"Page"), u"Page"_s);
    EXPECT_EQ(shownTitle(u" Tea "_s, u"Page"), u"Tea"_s);
}

TEST(ShownTitleTest, everyScriptAndSymbolIsSomethingToSee) {
    for (const QString &title : {u"?"_s, u"7"_s, u"€"_s, u"عنوان"_s, u"家計"_s, u"🌱"_s})
        EXPECT_EQ(shownTitle(title), title);
}
