#include "records/Conversation.h"

#include "records/Samples.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

qint64 countOf(const QStringList &contents) {
    return summaryOf(Samples::conversation(Samples::firstId, Samples::moment(), u"T"_s, contents))
        .characterCount;
}

} // namespace

TEST(Conversation, aNewChatIsEmptyWithTheDefaultTitleAndBothDatesNow) {
    const Conversation conversation = newConversation(Samples::moment());
    EXPECT_FALSE(conversation.id.isNull());
    EXPECT_NE(conversation.id, newConversation(Samples::moment()).id);
    EXPECT_EQ(conversation.title, u"New chat"_s);
    EXPECT_EQ(conversation.createdAt, Samples::moment());
    EXPECT_EQ(conversation.updatedAt, Samples::moment());
    EXPECT_TRUE(conversation.messages.isEmpty());
    EXPECT_EQ(conversation.droppedCount, std::nullopt);
    EXPECT_EQ(newConversation(Samples::moment(), u"Other"_s).title, u"Other"_s);
}

TEST(Conversation, theSummaryTakesIdTitleAndDate) {
    const ConversationSummary summary = summaryOf(Samples::fullConversation());
    EXPECT_EQ(summary.id, Samples::firstId);
    EXPECT_EQ(summary.title, u"Everything"_s);
    EXPECT_EQ(summary.updatedAt, Samples::moment(60));
}

TEST(Conversation, theCountIsAQuarterOfAllCharactersTruncated) {
    EXPECT_EQ(countOf({}), 0);
    EXPECT_EQ(countOf({u"abc"_s}), 0);
    EXPECT_EQ(countOf({u"abcd"_s}), 1);
    EXPECT_EQ(countOf({u"abcde"_s, u"abcde"_s, u"abcde"_s}), 3);
    EXPECT_EQ(countOf({u"abcdefg"_s, u"abc"_s}), 2);
}

TEST(Conversation, aFlagCountsAsOneCharacter) {
    const QString flag = u"\U0001F1E9\U0001F1EA"_s;
    EXPECT_EQ(countOf({flag, flag, flag}), 0);
    EXPECT_EQ(countOf({flag + flag, u"e\u0301"_s, u"\r\n"_s}), 1);
}

TEST(Conversation, everyRoleCountsButOnlyTheVisibleText) {
    Conversation conversation = Samples::fullConversation();
    conversation.messages = {};
    for (const Role role : {Role::system, Role::user, Role::assistant, Role::tool})
        conversation.messages.append(Samples::message(u"abcd"_s, role));
    EXPECT_EQ(summaryOf(conversation).characterCount, 4);
    for (Message &message : conversation.messages) {
        message.reasoning = u"reasoning that is long"_s;
        message.toolCalls = {{u"id"_s, u"name"_s, u"arguments that are long"_s}};
        message.attachments = {{Samples::firstId, u"name"_s, u"text that is long"_s}};
        message.page = {u"title"_s, u"markdown that is long"_s};
    }
    EXPECT_EQ(summaryOf(conversation).characterCount, 4);
}

TEST(Conversation, recordsAreEqualWhenAllFieldsAre) {
    const Conversation one = Samples::fullConversation();
    Conversation other = one;
    EXPECT_EQ(one, other);
    other.messages.last().pageFailed = true;
    EXPECT_NE(one, other);
    ConversationSummary summary = summaryOf(one);
    summary.characterCount += 1;
    EXPECT_NE(summary, summaryOf(one));
}

TEST(Conversation, aCopyOwnsItsContent) {
    const Conversation one = Samples::fullConversation();
    Conversation copy = one;
    copy.messages[0].content = u"changed"_s;
    EXPECT_EQ(one.messages[0].content, u"hello"_s);
}
