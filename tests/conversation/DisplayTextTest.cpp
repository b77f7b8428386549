#include "conversation/DisplayText.h"

#include "client/PlainTextRepair.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// The same by regular expressions and line by line.
QString plainDisplayText(const QString &text) {
    QStringList shown;
    for (const QString &line : plainlyHiddenTags(text).split(u'\n')) {
        if (line.trimmed().startsWith(u"```page"_s))
            break;
        shown.append(line);
    }
    return shown.join(u'\n').trimmed();
}

} // namespace

TEST(DisplayText, anOpenTagHidesWhatFollows) {
    EXPECT_EQ(displayText(u"Hello <think>hm"_s), u"Hello"_s);
    EXPECT_EQ(displayText(u"Hello <tool_call>{\"na"_s), u"Hello"_s);
}

TEST(DisplayText, closedBlocksOfAnyCaseGo) {
    EXPECT_EQ(displayText(u"<THINK>a</THINK>b"_s), u"b"_s);
    EXPECT_EQ(displayText(u"a <tool_call>{}</tool_call> b"_s), u"a  b"_s);
}

TEST(DisplayText, aTagIsShownUntilItIsWhole) {
    EXPECT_EQ(displayText(u"Hello <thi"_s), u"Hello <thi"_s);
    EXPECT_EQ(displayText(u"Hello <think>"_s), u"Hello"_s);
}

TEST(DisplayText, aPageIsHiddenAfterTheTagsAre) {
    EXPECT_EQ(displayText(u"Here it is:\n```page\n# Draft"_s), u"Here it is:"_s);
    EXPECT_EQ(displayText(u"a\n<think>b</think>```page\n# Draft"_s), u"a"_s);
    EXPECT_EQ(displayText(u"a<think>\n```page\n</think>b"_s), u"ab"_s);
}

TEST(DisplayText, whiteSpaceAtTheEndsGoes) {
    EXPECT_EQ(displayText(u" \n\r\na\n b \u00A0\u2028"_s), u"a\n b"_s);
    EXPECT_EQ(displayText(u" \n"_s), u""_s);
    EXPECT_EQ(displayText({}), u""_s);
}

TEST(DisplayText, aPlainReplyIsNotEvenCopied) {
    const QString text(1000, u'x');
    EXPECT_EQ(displayText(text).constData(), text.constData());
}

TEST(DisplayText, itAgreesWithThePlainReading) {
    std::mt19937 random(50);
    for (int round = 0; round < 10000; ++round) {
        const QString text =
            taggedText(random) + (random() % 2 ? u"\n ```page"_s : u" ```page"_s) + taggedText(random);
        ASSERT_EQ(displayText(text), plainDisplayText(text)) << text.toStdString();
    }
}

TEST(DisplayText, twoMegabytesTakeOnePass) {
    for (const QString &unit : {u"<think>"_s, u"x```page"_s, u" "_s, u"<think>\n```page\n</think>"_s}) {
        const QString text = unit.repeated(2'000'000 / unit.size());
        QElapsedTimer timer;
        timer.start();
        displayText(text);
        EXPECT_LT(timer.elapsed(), 5000) << unit.toStdString();
    }
}
