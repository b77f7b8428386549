#pragma once

#include "records/Conversation.h"

#include <QJsonValue>

/// The JSON forms of the chat records, one pair of overloads a record.
///
/// encode() leaves an absent optional field out; no null is ever written. decode() is strict: a
/// required key that is missing, or any value of the wrong JSON type, throws DecodingError. Unknown
/// keys are ignored. A JSON null stands for an absent key where the field is optional.

QJsonValue encode(const ToolCall &value);
QJsonValue encode(const SearchSource &value);
QJsonValue encode(const SearchEvent &value);
QJsonValue encode(const Attachment &value);
QJsonValue encode(const PageSnapshot &value);
QJsonValue encode(const Message &value);
QJsonValue encode(const Conversation &value);
QJsonValue encode(const ConversationSummary &value);
QJsonValue encode(const Sampling &value);

void decode(const QJsonValue &json, ToolCall &value);
void decode(const QJsonValue &json, SearchSource &value);
void decode(const QJsonValue &json, SearchEvent &value);
void decode(const QJsonValue &json, Attachment &value);
void decode(const QJsonValue &json, PageSnapshot &value);
void decode(const QJsonValue &json, Message &value);
void decode(const QJsonValue &json, Conversation &value);
void decode(const QJsonValue &json, ConversationSummary &value);
void decode(const QJsonValue &json, Sampling &value);
