#include "support/Script.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

using namespace Qt::StringLiterals;

QJsonObject completionChunk(const QJsonObject &delta, const QString &finishReason) {
    const QJsonValue reason =
        finishReason.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(finishReason);
    const QJsonObject choice{{u"index"_s, 0}, {u"delta"_s, delta}, {u"finish_reason"_s, reason}};
    return {{u"object"_s, u"chat.completion.chunk"_s}, {u"choices"_s, QJsonArray{choice}}};
}

Script Script::plain(int httpStatus) {
    Script script(httpStatus);
    script.body = Body::plain;
    return script;
}

Script Script::hangUp() {
    Script script;
    script.begin = Begin::hangUp;
    return script;
}

Script Script::silence() {
    Script script;
    script.begin = Begin::silence;
    return script;
}

Script &Script::raw(const QByteArray &bytes) {
    steps.append({Step::Kind::bytes, bytes, 0});
    return *this;
}

Script &Script::pause(int milliseconds) {
    steps.append({Step::Kind::pause, {}, milliseconds});
    return *this;
}

Script &Script::hold() {
    steps.append({Step::Kind::hold, {}, 0});
    return *this;
}

Script &Script::drop() {
    steps.append({Step::Kind::drop, {}, 0});
    return *this;
}

Script &Script::reset() {
    steps.append({Step::Kind::reset, {}, 0});
    return *this;
}

Script &Script::header(const QByteArray &name, const QByteArray &value) {
    headers.emplaceBack(name, value);
    return *this;
}

Script &Script::repeat(const QByteArray &bytes) {
    steps.append({Step::Kind::repeat, bytes, 0});
    return *this;
}

Script &Script::event(const QJsonObject &json) {
    return raw("data: " + QJsonDocument(json).toJson(QJsonDocument::Compact) + "\n\n");
}

Script &Script::content(const QString &text) {
    return event(completionChunk({{u"content"_s, text}}));
}

Script &Script::reasoning(const QString &text) {
    return event(completionChunk({{u"reasoning_content"_s, text}}));
}

Script &Script::call(const QJsonObject &fragment) {
    return event(completionChunk({{u"tool_calls"_s, QJsonArray{fragment}}}));
}

Script &Script::finish(const QString &reason) {
    return event(completionChunk({}, reason));
}

Script &Script::done() {
    return raw("data: [DONE]\n\n");
}

Script Script::reply(const QStringList &pieces) {
    Script script;
    for (const QString &piece : pieces)
        script.content(piece);
    script.finish(u"stop"_s).done();
    return script;
}

Script Script::toolCall(const QString &id, const QString &name, const QString &arguments) {
    Script script;
    const QJsonObject function{{u"name"_s, name}, {u"arguments"_s, arguments}};
    script.call({{u"index"_s, 0}, {u"id"_s, id}, {u"type"_s, u"function"_s}, {u"function"_s, function}});
    script.finish(u"tool_calls"_s).done();
    return script;
}
