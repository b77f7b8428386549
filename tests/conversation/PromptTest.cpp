#include "conversation/Prompt.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString opening =
    u"You are Ostrelin, a helpful assistant running entirely on the user's Mac.\nToday's date is Sunday, November 15, 2026. Your knowledge has a cutoff and may be out of date.\n"_s;
const QString manners =
    u"\nNever claim to have searched unless a search result is present.\nBe concise, warm, and use Markdown when helpful.\n"_s;
const QString offline = u"You cannot access the internet. If asked about recent events, say so."_s;
const QString searching =
    u"You can use the web_search tool when current or factual information would help."_s;
const QString pages =
    u"When a formatted page (headings, tables, charts or cards) would present the answer better than a chat reply, call the offer_page tool to ask first. Build the page only after the user agrees, then reply with a single ```page block containing Markdown. Inside it you may use optional directive blocks (metric, chart, line, donut, progress, callout, timeline, flow, compare, cards, spec); a color may follow the name, like ```chart:green or ```callout:warning. Use \"Label: value\" lines in metric, chart, line, donut and progress; \"a || b\" rows in compare, cards and spec; and \"A -> B -> C\" in flow."_s;
const QString remembering =
    u"Things you remember about the user, written in their own memory file. Use them when relevant, and call remember to suggest a new durable fact (the user approves it first):\n"_s;

PromptInputs plain() {
    return {.searchMode = SearchMode::off,
            .memoryEnabled = false,
            .supportsTools = false,
            .allowTools = true,
            .memory = {},
            .nudge = {},
            .today = QDate(2026, 11, 15),
            .locale = QLocale(QLocale::English, QLocale::UnitedStates)};
}

} // namespace

TEST(SystemPrompt, theSmallestOneHasNeitherPagesNorMemory) {
    EXPECT_EQ(systemPrompt(plain()), opening + offline + manners + u"\n"_s);
}

TEST(SystemPrompt, theFullOneHasItsPiecesInOrder) {
    PromptInputs inputs = plain();
    inputs.searchMode = SearchMode::ask;
    inputs.supportsTools = true;
    inputs.memoryEnabled = true;
    inputs.memory = u"\n - likes tea\n- likes rain \n"_s;
    inputs.nudge = u"Do it again."_s;
    EXPECT_EQ(systemPrompt(inputs), opening + searching + u" The user must approve each search."_s + manners +
                                        pages + u"\n"_s + remembering +
                                        u"- likes tea\n- likes rain\nDo it again."_s);
}

TEST(SystemPrompt, aSearchThatNeedsNoConsentIsOfferedPlainly) {
    PromptInputs inputs = plain();
    inputs.searchMode = SearchMode::always;
    inputs.supportsTools = true;
    EXPECT_EQ(systemPrompt(inputs), opening + searching + manners + pages + u"\n"_s);
}

TEST(SystemPrompt, searchNeedsAModelWithTools) {
    PromptInputs inputs = plain();
    inputs.searchMode = SearchMode::always;
    EXPECT_EQ(systemPrompt(inputs), opening + offline + manners + u"\n"_s);
}

TEST(SystemPrompt, aRequestWithoutToolsKeepsThePageInstruction) {
    PromptInputs inputs = plain();
    inputs.searchMode = SearchMode::ask;
    inputs.supportsTools = true;
    inputs.allowTools = false;
    EXPECT_EQ(systemPrompt(inputs), opening + offline + manners + pages + u"\n"_s);
}

TEST(SystemPrompt, aMemoryOfBlankLinesIsNoMemory) {
    PromptInputs inputs = plain();
    inputs.memoryEnabled = true;
    inputs.memory = u" \n\t\n"_s;
    EXPECT_EQ(systemPrompt(inputs), opening + offline + manners + u"\n"_s);
}

TEST(SystemPrompt, aMemoryThatIsSwitchedOffIsLeftOut) {
    PromptInputs inputs = plain();
    inputs.memory = u"- likes tea"_s;
    EXPECT_EQ(systemPrompt(inputs), opening + offline + manners + u"\n"_s);
}

TEST(SystemPrompt, theNudgeStandsAtTheVeryEnd) {
    PromptInputs inputs = plain();
    inputs.nudge = u"Again."_s;
    EXPECT_EQ(systemPrompt(inputs), opening + offline + manners + u"\n\nAgain."_s);
}

TEST(SystemPrompt, theDateIsWrittenAsThePersonWritesIt) {
    PromptInputs inputs = plain();
    inputs.locale = QLocale(QLocale::German, QLocale::Germany);
    EXPECT_TRUE(systemPrompt(inputs).contains(u"Sonntag, 15. November 2026. Your"_s));
}
