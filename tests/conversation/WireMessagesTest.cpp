#include "conversation/Prompt.h"

#include <QJsonObject>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QJsonObject promptObject{{u"role"_s, u"system"_s}, {u"content"_s, u"Prompt"_s}};

Message message(Role role, const QString &content) {
    return {.id = QUuid::createUuid(), .role = role, .content = content};
}

QJsonArray wireOf(const QList<Message> &messages) {
    return wireMessages(messages, u"Prompt"_s);
}

} // namespace

TEST(WireMessages, theSystemPromptComesFirstAndSystemMessagesAreLeftOut) {
    EXPECT_EQ(wireOf({}), (QJsonArray{promptObject}));
    EXPECT_EQ(wireOf({message(Role::system, u"old"_s)}), (QJsonArray{promptObject}));
}

TEST(WireMessages, userAndAssistantAreRoleAndContent) {
    const QJsonArray expected{promptObject, QJsonObject{{u"role"_s, u"user"_s}, {u"content"_s, u"Hi"_s}},
                              QJsonObject{{u"role"_s, u"assistant"_s}, {u"content"_s, u"Hello"_s}}};
    EXPECT_EQ(wireOf({message(Role::user, u"Hi"_s), message(Role::assistant, u"Hello"_s)}), expected);
}

TEST(WireMessages, filesComeBeforeTheQuestion) {
    Message question = message(Role::user, u"Which is longer?"_s);
    question.attachments = QList<Attachment>{{QUuid::createUuid(), u"a.txt"_s, u"one"_s},
                                             {QUuid::createUuid(), u"b.txt"_s, u"two"_s}};
    EXPECT_EQ(wireOf({question}).at(1).toObject()["content"_L1].toString(),
              u"Attached file: a.txt\n\none\n\nAttached file: b.txt\n\ntwo\n\nWhich is longer?"_s);
}

TEST(WireMessages, filesAloneHaveNothingAfterThem) {
    Message question = message(Role::user, QString());
    question.attachments = QList<Attachment>{{QUuid::createUuid(), u"a.txt"_s, u"one"_s}};
    EXPECT_EQ(wireOf({question}).at(1).toObject()["content"_L1].toString(), u"Attached file: a.txt\n\none"_s);
}

TEST(WireMessages, anEmptyListOfFilesIsNone) {
    Message question = message(Role::user, u"Hi"_s);
    question.attachments = QList<Attachment>{};
    EXPECT_EQ(wireOf({question}).at(1).toObject()["content"_L1].toString(), u"Hi"_s);
}

TEST(WireMessages, callsKeepTheirArgumentsAsText) {
    Message calling = message(Role::assistant, QString());
    calling.toolCalls = QList<ToolCall>{{u"c1"_s, u"web_search"_s, u"{ \"query\" : \"x\" }"_s}};
    const QJsonObject function{{u"name"_s, u"web_search"_s}, {u"arguments"_s, u"{ \"query\" : \"x\" }"_s}};
    const QJsonObject call{{u"id"_s, u"c1"_s}, {u"type"_s, u"function"_s}, {u"function"_s, function}};
    const QJsonObject expected{
        {u"role"_s, u"assistant"_s}, {u"content"_s, QString()}, {u"tool_calls"_s, QJsonArray{call}}};
    EXPECT_EQ(wireOf({calling}).at(1).toObject(), expected);
}

TEST(WireMessages, argumentsThatAreNoJsonGoOutAsNone) {
    for (const QString &broken : {u"{\"query\":\"x"_s, u""_s, u"query"_s}) {
        Message calling = message(Role::assistant, QString());
        calling.toolCalls = QList<ToolCall>{{u"c1"_s, u"f"_s, broken}};
        const QJsonArray calls = wireOf({calling}).at(1).toObject()["tool_calls"_L1].toArray();
        EXPECT_EQ(calls.at(0).toObject()["function"_L1].toObject()["arguments"_L1].toString(), u"{}"_s);
    }
}

TEST(WireMessages, argumentsThatOnlyAnIndulgentReaderTakesGoOutWrittenAnew) {
    Message calling = message(Role::assistant, QString());
    calling.toolCalls = QList<ToolCall>{{u"c1"_s, u"web_search"_s, u"{\"query\": \"a\nb\"}"_s}};
    const QJsonArray calls = wireOf({calling}).at(1).toObject()["tool_calls"_L1].toArray();
    EXPECT_EQ(calls.at(0).toObject()["function"_L1].toObject()["arguments"_L1].toString(),
              uR"({"query":"a\nb"})"_s);
}

TEST(WireMessages, anEmptyListOfCallsIsNoKey) {
    Message calling = message(Role::assistant, u"Hi"_s);
    calling.toolCalls = QList<ToolCall>{};
    EXPECT_FALSE(wireOf({calling}).at(1).toObject().contains("tool_calls"_L1));
}

TEST(WireMessages, aToolAnswerNamesItsCallWhereItKnowsIt) {
    Message answer = message(Role::tool, u"Unknown tool."_s);
    EXPECT_EQ(wireOf({answer}).at(1).toObject(),
              (QJsonObject{{u"role"_s, u"tool"_s}, {u"content"_s, u"Unknown tool."_s}}));
    answer.toolCallId = u"c1"_s;
    EXPECT_EQ(wireOf({answer}).at(1).toObject()["tool_call_id"_L1].toString(), u"c1"_s);
}

TEST(WireMessages, thinkingSearchesAndPagesAreNotSent) {
    Message reply = message(Role::assistant, u"Hello"_s);
    reply.reasoning = u"hm"_s;
    reply.searchEvent = SearchEvent{u"q"_s, SearchStatus::allowed, {}};
    reply.page = PageSnapshot{u"T"_s, u"# T"_s};
    reply.pageFailed = true;
    EXPECT_EQ(wireOf({reply}).at(1).toObject(),
              (QJsonObject{{u"role"_s, u"assistant"_s}, {u"content"_s, u"Hello"_s}}));
}
