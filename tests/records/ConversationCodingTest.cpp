#include "records/ConversationCoding.h"

#include "records/JsonFields.h"
#include "records/Samples.h"

#include <limits>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray bareMessage =
    R"({"id": "5F0C1B9E-6F0A-4A53-9D3E-0C6A8F1F2B11", "role": "user", "content": "hi"})";
const QByteArray bareConversation = R"({"id": "5F0C1B9E-6F0A-4A53-9D3E-0C6A8F1F2B11", "title": "T",
    "createdAt": "2026-11-15T13:18:58Z", "updatedAt": "2026-11-15T13:18:58Z", "messages": []})";

/// Every text that `object` becomes when one key is taken out of it, and when one is a null.
template<typename T>
void expectEveryKeyIsRequired(const T &record) {
    const QJsonObject object = encode(record).toObject();
    for (const QString &key : object.keys()) {
        QJsonObject without = object;
        without.remove(key);
        EXPECT_THROW(decodeRecord<T>(encodeText(without)), DecodingError) << key.toStdString();
        QJsonObject nulled = object;
        nulled.insert(key, QJsonValue::Null);
        EXPECT_THROW(decodeRecord<T>(encodeText(nulled)), DecodingError) << key.toStdString();
    }
}

/// The JSON of a message with one more key.
QByteArray messageWith(const QByteArray &field) {
    return bareMessage.chopped(1) + ", " + field + '}';
}

template<typename T>
T comesBack(const T &record) {
    return decodeRecord<T>(encodeRecord(record));
}

} // namespace

TEST(ConversationCoding, aChatWithEveryFieldComesBackAsItWas) {
    const Conversation conversation = Samples::fullConversation();
    EXPECT_EQ(comesBack(conversation), conversation);
    EXPECT_EQ(encodeRecord(comesBack(conversation)), encodeRecord(conversation));
}

TEST(ConversationCoding, theTextOfAChatIsFixedToTheByte) {
    Conversation conversation = Samples::conversation(Samples::firstId, Samples::moment(60), u"T"_s);
    Message message;
    message.id = Samples::secondId;
    message.content = u"hi"_s;
    conversation.messages.append(message);
    EXPECT_EQ(encodeRecord(conversation), R"({
    "createdAt": "2026-11-15T13:18:58Z",
    "id": "5F0C1B9E-6F0A-4A53-9D3E-0C6A8F1F2B11",
    "messages": [
        {
            "content": "hi",
            "id": "0A1B2C3D-4E5F-4061-8273-8495A6B7C8D9",
            "role": "user"
        }
    ],
    "title": "T",
    "updatedAt": "2026-11-15T13:19:58Z"
}
)");
}

TEST(ConversationCoding, aBareMessageHasItsThreeKeysAndNothingElse) {
    const auto message = decodeRecord<Message>(bareMessage);
    EXPECT_EQ(message.role, Role::user);
    EXPECT_EQ(message.content, u"hi"_s);
    EXPECT_EQ(encode(message).toObject().keys(), (QStringList{u"content"_s, u"id"_s, u"role"_s}));
    EXPECT_EQ(comesBack(message), message);
}

TEST(ConversationCoding, theKeysOfAFullMessageAreItsFieldNames) {
    EXPECT_EQ(encode(Samples::fullConversation().messages.last()).toObject().keys(),
              (QStringList{u"attachments"_s, u"content"_s, u"id"_s, u"page"_s, u"pageFailed"_s,
                           u"reasoning"_s, u"role"_s, u"searchEvent"_s, u"toolCallId"_s, u"toolCalls"_s}));
}

TEST(ConversationCoding, anEmptyListOfToolCallsIsNotAnAbsentOne) {
    const auto message = decodeRecord<Message>(messageWith(R"("toolCalls": [], "attachments": [])"));
    ASSERT_TRUE(message.toolCalls && message.attachments);
    EXPECT_TRUE(message.toolCalls->isEmpty());
    EXPECT_EQ(encode(message).toObject().value(u"toolCalls"_s), QJsonValue(QJsonArray()));
    EXPECT_EQ(comesBack(message), message);
}

TEST(ConversationCoding, emptyTextIsNotAbsentText) {
    const auto message = decodeRecord<Message>(messageWith(R"("reasoning": "", "toolCallId": "")"));
    EXPECT_EQ(message.reasoning, u""_s);
    EXPECT_EQ(message.toolCallId, u""_s);
    EXPECT_EQ(comesBack(message), message);
}

TEST(ConversationCoding, aNullStandsForAnAbsentOptionalField) {
    const auto message = decodeRecord<Message>(
        messageWith(R"("reasoning": null, "toolCalls": null, "toolCallId": null, "searchEvent": null,
                       "attachments": null, "page": null, "pageFailed": null)"));
    EXPECT_EQ(message, decodeRecord<Message>(bareMessage));
}

TEST(ConversationCoding, anOptionalFieldOfTheWrongTypeFails) {
    for (const char *field :
         {R"("reasoning": 1)", R"("toolCalls": {})", R"("toolCalls": [null])", R"("toolCallId": true)",
          R"("searchEvent": [])", R"("attachments": "x")", R"("page": "x")", R"("pageFailed": 1)",
          R"("pageFailed": "true")", R"("searchEvent": {"query": "q", "status": "maybe", "sources": []})",
          R"("searchEvent": {"query": "q", "status": "asked"})"})
        EXPECT_THROW(decodeRecord<Message>(messageWith(field)), DecodingError) << field;
}

TEST(ConversationCoding, everyKeyOfTheSmallRecordsIsRequired) {
    const Message message = Samples::fullConversation().messages.last();
    expectEveryKeyIsRequired(message.toolCalls->first());
    expectEveryKeyIsRequired(*message.searchEvent);
    expectEveryKeyIsRequired(message.searchEvent->sources.first());
    expectEveryKeyIsRequired(message.attachments->first());
    expectEveryKeyIsRequired(*message.page);
    expectEveryKeyIsRequired(Sampling{0.7, 0.8, 20, 0, 1.5});
    expectEveryKeyIsRequired(decodeRecord<Message>(bareMessage));
    expectEveryKeyIsRequired(decodeRecord<Conversation>(bareConversation));
}

TEST(ConversationCoding, anEmptyListOfSourcesIsWritten) {
    const SearchEvent event{u"q"_s, SearchStatus::denied, {}};
    EXPECT_EQ(encode(event).toObject().value(u"sources"_s), QJsonValue(QJsonArray()));
    EXPECT_EQ(encode(event).toObject().value(u"status"_s), QJsonValue(u"denied"_s));
    EXPECT_EQ(comesBack(event), event);
}

TEST(ConversationCoding, aChatWithoutADroppedCountDecodesAndHasNoSuchKeyAfterwards) {
    const auto conversation = decodeRecord<Conversation>(bareConversation);
    EXPECT_EQ(conversation.droppedCount, std::nullopt);
    EXPECT_EQ(encode(conversation).toObject().keys(),
              (QStringList{u"createdAt"_s, u"id"_s, u"messages"_s, u"title"_s, u"updatedAt"_s}));
}

TEST(ConversationCoding, anUnknownRoleFailsTheWholeChat) {
    QByteArray text = bareConversation;
    text.replace("[]", '[' + bareMessage + ']');
    EXPECT_EQ(decodeRecord<Conversation>(text).messages.size(), 1);
    for (const char *role : {"\"developer\"", "\"User\"", "\"\"", "1", "null"}) {
        QByteArray other = text;
        EXPECT_THROW(decodeRecord<Conversation>(other.replace("\"user\"", role)), DecodingError) << role;
    }
}

TEST(ConversationCoding, aMalformedDateOrUuidFailsTheWholeChat) {
    for (const char *date : {"2026-11-15T13:18:58.25Z", "2026-11-15T13:18:58", "2026-02-30T13:18:58Z"}) {
        QByteArray text = bareConversation;
        EXPECT_THROW(decodeRecord<Conversation>(text.replace("2026-11-15T13:18:58Z", date)), DecodingError);
    }
    QByteArray text = bareConversation;
    EXPECT_THROW(decodeRecord<Conversation>(text.replace("5F0C1B9E-", "5F0C1B9E")), DecodingError);
}

TEST(ConversationCoding, subSecondsOfADateAreLostOnWriting) {
    Conversation conversation = Samples::fullConversation();
    conversation.updatedAt = conversation.updatedAt.addMSecs(700);
    EXPECT_EQ(comesBack(conversation).updatedAt, Samples::moment(60));
}

TEST(ConversationCoding, unknownKeysAreIgnoredAndLost) {
    QByteArray text = bareConversation;
    text.replace("\"title\"", "\"colour\": {\"a\": [1]}, \"title\"");
    const auto conversation = decodeRecord<Conversation>(text);
    EXPECT_EQ(conversation, decodeRecord<Conversation>(bareConversation));
    EXPECT_FALSE(encodeRecord(conversation).contains("colour"));
}

TEST(ConversationCoding, aSummaryWithoutACountReadsAsZeroAndIsWrittenWithOne) {
    const auto summary = decodeRecord<ConversationSummary>(
        R"({"id": "5F0C1B9E-6F0A-4A53-9D3E-0C6A8F1F2B11", "title": "T", "updatedAt": "2026-11-15T13:18:58Z"})");
    EXPECT_EQ(summary.characterCount, 0);
    EXPECT_EQ(encode(summary).toObject().value(u"characterCount"_s), QJsonValue(0));
    for (const QString &key : {u"id"_s, u"title"_s, u"updatedAt"_s}) {
        QJsonObject without = encode(summary).toObject();
        without.remove(key);
        EXPECT_THROW(decodeRecord<ConversationSummary>(encodeText(without)), DecodingError);
    }
}

TEST(ConversationCoding, oneBadRowFailsTheWholeIndex) {
    const QList<ConversationSummary> rows{summaryOf(Samples::fullConversation())};
    EXPECT_EQ(comesBack(rows), rows);
    QByteArray text = encodeRecord(rows);
    EXPECT_THROW(decodeRecord<QList<ConversationSummary>>(text.replace("\n]", ",\n{}]")), DecodingError);
    EXPECT_THROW(decodeRecord<QList<ConversationSummary>>("{}"), DecodingError);
}

TEST(ConversationCoding, samplingThatIsNotFiniteCannotBeEncoded) {
    Sampling sampling{0.7, 0.8, 20, 0, 1.5};
    EXPECT_EQ(comesBack(sampling), sampling);
    sampling.minP = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(encodeRecord(sampling), EncodingError);
}

TEST(ConversationCoding, aWholeNumberServesAsADoubleButNoFractionAsAnInteger) {
    const QByteArray text = R"({"temperature": 1, "topP": 1.0, "topK": 20, "minP": 0, "presencePenalty": 0})";
    EXPECT_EQ(decodeRecord<Sampling>(text), (Sampling{1, 1, 20, 0, 0}));
    QByteArray other = text;
    EXPECT_THROW(decodeRecord<Sampling>(other.replace("20", "20.5")), DecodingError);
}
