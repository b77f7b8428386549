#include "web/MarkupScan.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(FoldedCase, isThatOfNamesAndKeepsEveryPlace) {
    EXPECT_EQ(foldedCase(u"AZaz09<É"), u"azaz09<É"_s);
    EXPECT_EQ(foldedCase(u"\u017F\u212A"), u"sk"_s);
    EXPECT_EQ(foldedCase(u"\u0130\u1E9E\U00010400"), u"\u0130\u1E9E\U00010400"_s);
    EXPECT_EQ(foldedCase({}), QString());
}

TEST(WordBorder, standsBetweenAWordAndWhatIsNone) {
    for (const QString &inWords : {u"a"_s, u"\u00E4"_s, u"\u6F22"_s, u"7"_s, u"\u0667"_s, u"_"_s, u"\u203F"_s,
                                   u"\u2160"_s, u"\u0301"_s, u"\u200C"_s, u"\u200D"_s, u"\U0001D400"_s}) {
        EXPECT_FALSE(isWordBorder(QString(u"a"_s + inWords), 1)) << inWords.toStdString();
        EXPECT_FALSE(isWordBorder(QString(inWords + u"a"_s), inWords.size())) << inWords.toStdString();
        EXPECT_TRUE(isWordBorder(QString(u">"_s + inWords), 1)) << inWords.toStdString();
        EXPECT_TRUE(isWordBorder(inWords, 0) && isWordBorder(inWords, inWords.size()));
    }
    for (const QString &apart :
         {u" "_s, u"-"_s, u">"_s, u"/"_s, u"\u00A0"_s, u"\u00B2"_s, u"\u200B"_s, u"\U0001F600"_s, u"\0"_s}) {
        EXPECT_TRUE(isWordBorder(QString(u"a"_s + apart), 1)) << apart.toStdString();
        EXPECT_TRUE(isWordBorder(QString(apart + u"a"_s), apart.size())) << apart.toStdString();
        EXPECT_FALSE(isWordBorder(QString(u">"_s + apart), 1)) << apart.toStdString();
    }
    EXPECT_FALSE(isWordBorder(u"", 0));
}

TEST(NextPlace, isFoundForQuestionsInAscendingOrder) {
    NextPlace place(u"a>b>>", u'>');
    EXPECT_EQ(place.from(0), 1);
    EXPECT_EQ(place.from(1), 1);
    EXPECT_EQ(place.from(2), 3);
    EXPECT_EQ(place.from(4), 4);
    EXPECT_EQ(place.from(5), 5);
    EXPECT_EQ(place.from(5), 5);
    EXPECT_EQ(NextPlace(u"", u'>').from(0), 0);
}
