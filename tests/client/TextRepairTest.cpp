#include "client/TextRepair.h"

#include "client/PlainTextRepair.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

ExtractedThinking extracted(const QString &text) {
    return extractThinking(text);
}

} // namespace

TEST(ExtractThinking, whatStandsBetweenTheTagsIsJoined) {
    EXPECT_EQ(extracted(u"<think>a</think>b<think>c</think>d"_s), (ExtractedThinking{u"bd"_s, u"ac"_s}));
}

TEST(ExtractThinking, theTwoEndsOfABlockAreIndependent) {
    EXPECT_EQ(extracted(u"<thinking>a</think>b"_s), (ExtractedThinking{u"b"_s, u"a"_s}));
    EXPECT_EQ(extracted(u"<think>a</thinking>b"_s), (ExtractedThinking{u"b"_s, u"a"_s}));
}

TEST(ExtractThinking, withoutATagInLowerCaseTheReplyIsLeftAlone) {
    EXPECT_EQ(extracted(u" <THINK>a</THINK>b\n"_s), (ExtractedThinking{u" <THINK>a</THINK>b\n"_s, {}}));
    EXPECT_EQ(extracted(u" a </think> "_s), (ExtractedThinking{u" a </think> "_s, {}}));
    EXPECT_EQ(extracted({}), ExtractedThinking());
}

TEST(ExtractThinking, besideATagInLowerCaseAnyCaseCounts) {
    EXPECT_EQ(extracted(u"<THINK>a</Thinking>b<think>c</THINK>"_s), (ExtractedThinking{u"b"_s, u"ac"_s}));
    EXPECT_EQ(extracted(u"<THINK>a</THINK>b <thinker>"_s), (ExtractedThinking{u"b <thinker>"_s, u"a"_s}));
}

TEST(ExtractThinking, bothPartsAreTrimmed) {
    EXPECT_EQ(extracted(u" \n<think>\r\n a\u00A0\n\n</think>\n\n b \u2028"_s),
              (ExtractedThinking{u"b"_s, u"a"_s}));
    EXPECT_EQ(extracted(u"<think>a </think>x<think> b</think>"_s).thinking, u"a  b"_s);
}

TEST(ExtractThinking, aReplyThatIsOnlyThinkingHasNoText) {
    EXPECT_EQ(extracted(u"<think>hm\nhm</think>\n"_s), (ExtractedThinking{u""_s, u"hm\nhm"_s}));
}

TEST(ExtractThinking, anOpenTagStays) {
    EXPECT_EQ(extracted(u" a <think>b "_s), (ExtractedThinking{u"a <think>b"_s, {}}));
    EXPECT_EQ(extracted(u"<think>a</think>b<think>c"_s), (ExtractedThinking{u"b<think>c"_s, u"a"_s}));
}

TEST(ExtractThinking, tagsDoNotNest) {
    EXPECT_EQ(extracted(u"<think>a<think>b</think>c</think>d"_s),
              (ExtractedThinking{u"c</think>d"_s, u"a<think>b"_s}));
}

TEST(ExtractThinking, theEmptyBlockGoesToo) {
    EXPECT_EQ(extracted(u"<think></think>a"_s), (ExtractedThinking{u"a"_s, {}}));
    EXPECT_EQ(extracted(u"<think></think>"_s), (ExtractedThinking{u""_s, {}}));
}

TEST(HideTags, closedBlocksGoAndAnOpenTagHidesTheRest) {
    EXPECT_EQ(hideTags(u"a<think>b</think>c"_s), u"ac"_s);
    EXPECT_EQ(hideTags(u"a<tool_call>b</tool_call>c"_s), u"ac"_s);
    EXPECT_EQ(hideTags(u"Hello <think>hm"_s), u"Hello "_s);
    EXPECT_EQ(hideTags(u"a<tool_call>{"_s), u"a"_s);
    EXPECT_EQ(hideTags(u"a<tool_call>b</tool_call>c<thinking>d"_s), u"ac"_s);
}

TEST(HideTags, anyCaseCounts) {
    EXPECT_EQ(hideTags(u"<THINK>a</THINK>b"_s), u"b"_s);
    EXPECT_EQ(hideTags(u"a<Tool_Call>b</TOOL_CALL>c<THINKING>"_s), u"ac"_s);
}

TEST(HideTags, aBlockOfOneKindIsNotClosedByTheOther) {
    EXPECT_EQ(hideTags(u"a<think>b</tool_call>c"_s), u"a"_s);
    EXPECT_EQ(hideTags(u"a<think>b<tool_call>c</tool_call>d"_s), u"a"_s);
    EXPECT_EQ(hideTags(u"a<tool_call><think>b</tool_call>c</think>d"_s), u"ac</think>d"_s);
}

TEST(HideTags, aTagThatComesTogetherByRemovalIsOpen) {
    EXPECT_EQ(hideTags(u"a<th<think>b</think>ink>c"_s), u"a"_s);
    EXPECT_EQ(hideTags(u"a<th<think>b</think>ink>c</think>d"_s), u"a"_s);
}

TEST(HideTags, whatIsNoWholeTagIsShown) {
    for (const QString &text : {u""_s, u"a"_s, u"a<thi"_s, u"a<think"_s, u"a<thinkin>"_s, u"a< think>"_s,
                                u"a</think>b"_s, u"a<tool_calls>"_s, u"1 < 2"_s, u"<"_s, u"\n<b> "_s})
        EXPECT_EQ(hideTags(text), text) << text.toStdString();
}

TEST(HideTags, aTextWithoutTagsIsNotEvenCopied) {
    const QString text(1000, u'x');
    EXPECT_EQ(hideTags(text).constData(), text.constData());
}

TEST(TextRepair, itAgreesWithRegularExpressions) {
    std::mt19937 random(40);
    int thoughts = 0;
    int hidden = 0;
    for (int round = 0; round < 20000; ++round) {
        const QString text = taggedText(random);
        const ExtractedThinking found = extractThinking(text);
        ASSERT_EQ(found, plainlyExtractedThinking(text)) << text.toStdString();
        ASSERT_EQ(hideTags(text), plainlyHiddenTags(text)) << text.toStdString();
        thoughts += found.thinking.isEmpty() ? 0 : 1;
        hidden += hideTags(text) == text ? 0 : 1;
    }
    EXPECT_GT(thoughts, 1000);
    EXPECT_GT(hidden, 5000);
}

TEST(TextRepair, twoMegabytesOfTagsTakeOnePass) {
    const QStringList units{u"<think>"_s,
                            u"</think>"_s,
                            u"<think></think>"_s,
                            u"<thinking"_s,
                            u"<"_s,
                            u"</"_s,
                            u"<tool_call>"_s,
                            u"</tool_call>"_s,
                            u"<think><tool_call>"_s,
                            u"<think></tool_call>"_s,
                            u"<think>a</thin"_s};
    for (const QString &unit : units) {
        const QString text = unit.repeated(2'000'000 / unit.size());
        QElapsedTimer timer;
        timer.start();
        extractThinking(text);
        hideTags(text);
        EXPECT_LT(timer.elapsed(), 5000) << unit.toStdString();
    }
}
