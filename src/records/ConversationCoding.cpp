#include "records/ConversationCoding.h"

#include "records/JsonFields.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto toolCallFields = [](auto &record, auto &value) {
    record.required("id"_L1, value.id);
    record.required("name"_L1, value.name);
    record.required("arguments"_L1, value.arguments);
};

constexpr auto searchSourceFields = [](auto &record, auto &value) {
    record.required("id"_L1, value.id);
    record.required("title"_L1, value.title);
    record.required("url"_L1, value.url);
    record.required("snippet"_L1, value.snippet);
};

constexpr auto searchEventFields = [](auto &record, auto &value) {
    record.required("query"_L1, value.query);
    record.required("status"_L1, value.status);
    record.required("sources"_L1, value.sources);
};

constexpr auto attachmentFields = [](auto &record, auto &value) {
    record.required("id"_L1, value.id);
    record.required("name"_L1, value.name);
    record.required("text"_L1, value.text);
};

constexpr auto pageSnapshotFields = [](auto &record, auto &value) {
    record.required("title"_L1, value.title);
    record.required("markdown"_L1, value.markdown);
};

constexpr auto messageFields = [](auto &record, auto &value) {
    record.required("id"_L1, value.id);
    record.required("role"_L1, value.role);
    record.required("content"_L1, value.content);
    record.optional("reasoning"_L1, value.reasoning);
    record.optional("toolCalls"_L1, value.toolCalls);
    record.optional("toolCallId"_L1, value.toolCallId);
    record.optional("searchEvent"_L1, value.searchEvent);
    record.optional("attachments"_L1, value.attachments);
    record.optional("page"_L1, value.page);
    record.optional("pageFailed"_L1, value.pageFailed);
};

constexpr auto conversationFields = [](auto &record, auto &value) {
    record.required("id"_L1, value.id);
    record.required("title"_L1, value.title);
    record.required("createdAt"_L1, value.createdAt);
    record.required("updatedAt"_L1, value.updatedAt);
    record.required("messages"_L1, value.messages);
    record.optional("droppedCount"_L1, value.droppedCount);
};

constexpr auto summaryFields = [](auto &record, auto &value) {
    record.defaulted("characterCount"_L1, value.characterCount);
    record.required("id"_L1, value.id);
    record.required("title"_L1, value.title);
    record.required("updatedAt"_L1, value.updatedAt);
};

constexpr auto samplingFields = [](auto &record, auto &value) {
    record.required("temperature"_L1, value.temperature);
    record.required("topP"_L1, value.topP);
    record.required("topK"_L1, value.topK);
    record.required("minP"_L1, value.minP);
    record.required("presencePenalty"_L1, value.presencePenalty);
};

} // namespace

QJsonValue encode(const ToolCall &value) {
    return encodeFields(value, toolCallFields);
}

QJsonValue encode(const SearchSource &value) {
    return encodeFields(value, searchSourceFields);
}

QJsonValue encode(const SearchEvent &value) {
    return encodeFields(value, searchEventFields);
}

QJsonValue encode(const Attachment &value) {
    return encodeFields(value, attachmentFields);
}

QJsonValue encode(const PageSnapshot &value) {
    return encodeFields(value, pageSnapshotFields);
}

QJsonValue encode(const Message &value) {
    return encodeFields(value, messageFields);
}

QJsonValue encode(const Conversation &value) {
    return encodeFields(value, conversationFields);
}

QJsonValue encode(const ConversationSummary &value) {
    return encodeFields(value, summaryFields);
}

QJsonValue encode(const Sampling &value) {
    return encodeFields(value, samplingFields);
}

void decode(const QJsonValue &json, ToolCall &value) {
    decodeFields(json, value, toolCallFields);
}

void decode(const QJsonValue &json, SearchSource &value) {
    decodeFields(json, value, searchSourceFields);
}

void decode(const QJsonValue &json, SearchEvent &value) {
    decodeFields(json, value, searchEventFields);
}

void decode(const QJsonValue &json, Attachment &value) {
    decodeFields(json, value, attachmentFields);
}

void decode(const QJsonValue &json, PageSnapshot &value) {
    decodeFields(json, value, pageSnapshotFields);
}

void decode(const QJsonValue &json, Message &value) {
    decodeFields(json, value, messageFields);
}

void decode(const QJsonValue &json, Conversation &value) {
    decodeFields(json, value, conversationFields);
}

void decode(const QJsonValue &json, ConversationSummary &value) {
    decodeFields(json, value, summaryFields);
}

void decode(const QJsonValue &json, Sampling &value) {
    decodeFields(json, value, samplingFields);
}
