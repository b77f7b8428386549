#include "pages/PageAnalysis.h"

#include <QString>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(HidePageWhileStreaming, theLinesBeforeThePageAreShown) {
    EXPECT_EQ(hidePageWhileStreaming(u"Here it is:\n```page\n# Draft"), u"Here it is:"_s);
    EXPECT_EQ(hidePageWhileStreaming(u"a\n\n```page"), u"a\n"_s);
    EXPECT_EQ(hidePageWhileStreaming(u"a\n \t\u00A0```page\nb\n```\nc"), u"a"_s);
}

TEST(HidePageWhileStreaming, aPageInTheFirstLineHidesAll) {
    EXPECT_EQ(hidePageWhileStreaming(u"  ```page\n# Draft"), u""_s);
    EXPECT_EQ(hidePageWhileStreaming(u"\n```page"), u""_s);
}

TEST(HidePageWhileStreaming, itIsATestOfTheBeginningOnly) {
    EXPECT_EQ(hidePageWhileStreaming(u"a\n```pages\nb"), u"a"_s);
    EXPECT_EQ(hidePageWhileStreaming(u"a\n```page:green\nb"), u"a"_s);
}

TEST(HidePageWhileStreaming, otherSpellingsAreShown) {
    for (const QString &text : {u""_s, u"a"_s, u"``` page\n# Draft"_s, u"```PAGE\n# Draft"_s, u"````page"_s,
                                u"x ```page"_s, u"\r```page"_s, u"``page"_s, u"```pag"_s, u"`` ```page"_s})
        EXPECT_EQ(hidePageWhileStreaming(text), text) << text.toStdString();
}

TEST(HidePageWhileStreaming, aLaterLineCountsAlthoughAnEarlierOneOnlyMentionsIt) {
    EXPECT_EQ(hidePageWhileStreaming(u"write ```page```page\nb\n```page\nc"), u"write ```page```page\nb"_s);
}
