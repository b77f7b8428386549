#include "client/WrittenToolCalls.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString idOf(qsizetype ordinal) {
    return u"xml_"_s + QString::number(ordinal);
}

/// The JSON text of an object or an array; nothing else is a document.
QString textOf(const QJsonDocument &document) {
    return document.isNull() ? u"{}"_s : QString::fromUtf8(document.toJson(QJsonDocument::Compact));
}

QString argumentsText(const QJsonValue &arguments) {
    if (arguments.isString())
        return arguments.toString();
    if (arguments.isArray())
        return textOf(QJsonDocument(arguments.toArray()));
    return textOf(arguments.isObject() ? QJsonDocument(arguments.toObject()) : QJsonDocument());
}

std::optional<ToolCall> jsonCall(QStringView body, qsizetype ordinal) {
    const QJsonObject call = QJsonDocument::fromJson(body.toUtf8()).object();
    const QJsonValue name = call["name"_L1];
    if (!name.isString())
        return std::nullopt;
    return ToolCall{idOf(ordinal), name.toString(), argumentsText(call["arguments"_L1])};
}

/// The parameters in `text`; of those with the same key the last.
QMap<QString, QString> parametersOf(QStringView text) {
    constexpr QStringView beginning = u"<parameter=";
    constexpr QStringView closing = u"</parameter>";
    QMap<QString, QString> parameters;
    qsizetype done = 0;
    for (;;) {
        const qsizetype start = text.indexOf(beginning, done);
        const qsizetype key = start + beginning.size();
        const qsizetype keyEnd = start < 0 ? -1 : text.indexOf(u'>', key);
        if (keyEnd < 0)
            return parameters;
        if (keyEnd == key) {
            done = keyEnd;
            continue;
        }
        const qsizetype valueEnd = text.indexOf(closing, keyEnd + 1);
        if (valueEnd < 0)
            return parameters;
        parameters.insert(text.sliced(key, keyEnd - key).toString(),
                          text.sliced(keyEnd + 1, valueEnd - keyEnd - 1).trimmed().toString());
        done = valueEnd + closing.size();
    }
}

std::optional<ToolCall> xmlCall(QStringView body, qsizetype ordinal) {
    constexpr QStringView beginning = u"<function=";
    const qsizetype function = body.indexOf(beginning);
    if (function < 0)
        return std::nullopt;
    const QStringView rest = body.sliced(function + beginning.size());
    const auto nameEnd = std::find_if(
        rest.begin(), rest.end(), [](QChar character) { return character == u'>' || character == u'\n'; });
    const qsizetype nameSize = nameEnd - rest.begin();
    // In the order of their keys each goes to the end of the object, so that nothing is ever moved.
    QJsonObject arguments;
    const QMap<QString, QString> parameters = parametersOf(rest.sliced(nameSize));
    for (auto each = parameters.begin(); each != parameters.end(); ++each)
        arguments.insert(each.key(), each.value());
    return ToolCall{idOf(ordinal), rest.first(nameSize).toString(), textOf(QJsonDocument(arguments))};
}

} // namespace

std::optional<ToolCall> parseToolCallBody(QStringView body, qsizetype ordinal) {
    if (auto call = jsonCall(body, ordinal))
        return call;
    return xmlCall(body, ordinal);
}

ExtractedToolCalls extractToolCalls(const QString &text) {
    constexpr QStringView opening = u"<tool_call>";
    constexpr QStringView closing = u"</tool_call>";
    const QStringView whole(text);
    qsizetype opened = whole.indexOf(opening);
    if (opened < 0)
        return {text, {}};
    ExtractedToolCalls found;
    qsizetype done = 0;
    for (qsizetype ordinal = 0; opened >= 0; ++ordinal) {
        const qsizetype body = opened + opening.size();
        const qsizetype closed = whole.indexOf(closing, body);
        if (closed < 0)
            break;
        if (const auto call = parseToolCallBody(whole.sliced(body, closed - body).trimmed(), ordinal))
            found.calls.append(*call);
        found.text += whole.sliced(done, opened - done);
        done = closed + closing.size();
        opened = whole.indexOf(opening, done);
    }
    found.text += whole.sliced(done);
    found.text = found.text.trimmed();
    return found;
}
