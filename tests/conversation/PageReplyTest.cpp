#include "conversation/PageReply.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString page = u"Here it is:\n```page\n# Tea\nGreen.\n```\nEnjoy."_s;
const QString broken = u"Here it is:\n```page\n# Tea"_s;
const QDateTime now(QDate(2026, 11, 15), QTime(13, 18, 58), Qt::UTC);

Conversation chatWith(const QString &reply) {
    Conversation chat = newConversation(now);
    chat.messages = {{.id = QUuid::createUuid(), .role = Role::user, .content = u"A page, please."_s},
                     {.id = QUuid::createUuid(), .role = Role::assistant, .content = reply}};
    return chat;
}

} // namespace

TEST(PageReply, anAcceptedPageLeavesTheTextAndIsADraft) {
    Conversation chat = chatWith(page);
    const auto draft = finishPage(chat, true, now);
    const Message &reply = chat.messages.last();
    EXPECT_EQ(reply.content, u"Here it is:\nEnjoy."_s);
    EXPECT_EQ(reply.page, (PageSnapshot{u"Tea"_s, u"# Tea\nGreen."_s}));
    EXPECT_FALSE(reply.pageFailed);
    ASSERT_TRUE(draft);
    EXPECT_EQ(*draft, (PageDocument{draft->id, u"Tea"_s, u"# Tea\nGreen."_s, now, now}));
    EXPECT_FALSE(draft->id.isNull());
}

TEST(PageReply, aPageThatCameUnaskedIsTakenWithoutADraft) {
    Conversation chat = chatWith(page);
    EXPECT_FALSE(finishPage(chat, false, now));
    EXPECT_EQ(chat.messages.last().content, u"Here it is:\nEnjoy."_s);
    EXPECT_EQ(chat.messages.last().page, (PageSnapshot{u"Tea"_s, u"# Tea\nGreen."_s}));
}

TEST(PageReply, anAcceptedPageThatCannotBeMadeIsToldOf) {
    Conversation chat = chatWith(broken);
    EXPECT_FALSE(finishPage(chat, true, now));
    EXPECT_EQ(chat.messages.last().content, u"Here it is:"_s);
    EXPECT_EQ(chat.messages.last().pageFailed, true);
    EXPECT_FALSE(chat.messages.last().page);
}

TEST(PageReply, aBrokenPageThatNobodyAskedForStaysAsItIs) {
    for (const QString &reply : {broken, u" No page. "_s}) {
        Conversation chat = chatWith(reply);
        const Conversation before = chat;
        EXPECT_FALSE(finishPage(chat, false, now));
        EXPECT_EQ(chat, before);
    }
}

TEST(PageReply, onlyTheLastReplyCounts) {
    Conversation chat = chatWith(page);
    chat.messages.append({.id = QUuid::createUuid(), .role = Role::assistant, .content = u"So."_s});
    chat.messages.append({.id = QUuid::createUuid(), .role = Role::tool, .content = page});
    const Conversation before = chat;
    EXPECT_FALSE(finishPage(chat, false, now));
    EXPECT_EQ(chat, before);
}

TEST(PageReply, aChatWithoutAReplyHasNoPage) {
    Conversation chat = newConversation(now);
    EXPECT_FALSE(finishPage(chat, true, now));
    EXPECT_TRUE(chat.messages.isEmpty());
}

TEST(PageReply, theCorrectionIsDueWhereThereIsNoPage) {
    EXPECT_FALSE(correctionOf(page));
    for (const QString &reply : {broken, u"No page."_s, u"```page\n```"_s, u"```page\n```foo\n```\n```"_s})
        EXPECT_EQ(correctionOf(reply), pageCorrection());
    EXPECT_EQ(
        pageCorrection(),
        u"Your last reply did not contain a usable page. Reply again with a single ```page fenced "
        "block, close the fence, keep it non-empty, and use only these directive blocks: metric, chart, "
        "line, donut, progress, callout, timeline, sources, flow, compare, cards, spec, subtitle, "
        "divider. Put nothing outside the ```page block."_s);
}
