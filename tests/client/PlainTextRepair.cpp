#include "client/PlainTextRepair.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const QRegularExpression::PatternOption anyCase = QRegularExpression::CaseInsensitiveOption;

QString argumentsText(const QJsonValue &arguments) {
    if (arguments.isString())
        return arguments.toString();
    if (arguments.isObject())
        return QString::fromUtf8(QJsonDocument(arguments.toObject()).toJson(QJsonDocument::Compact));
    if (arguments.isArray())
        return QString::fromUtf8(QJsonDocument(arguments.toArray()).toJson(QJsonDocument::Compact));
    return u"{}"_s;
}

std::optional<ToolCall> plainCall(const QString &body, qsizetype ordinal) {
    const QString id = u"xml_%1"_s.arg(ordinal);
    const QJsonObject json = QJsonDocument::fromJson(body.toUtf8()).object();
    if (json["name"_L1].isString())
        return ToolCall{id, json["name"_L1].toString(), argumentsText(json["arguments"_L1])};
    const QRegularExpression function(u"<function=([^>\\n]*)([\\s\\S]*)"_s);
    const QRegularExpressionMatch found = function.match(body);
    if (!found.hasMatch())
        return std::nullopt;
    const QRegularExpression parameter(u"<parameter=([^>]+)>([\\s\\S]*?)</parameter>"_s);
    QJsonObject arguments;
    for (const QRegularExpressionMatch &each : parameter.globalMatch(found.captured(2)))
        arguments.insert(each.captured(1), each.captured(2).trimmed());
    return ToolCall{id, found.captured(1), argumentsText(arguments)};
}

} // namespace

ExtractedThinking plainlyExtractedThinking(const QString &text) {
    if (!text.contains(u"<think"_s))
        return {text, {}};
    const QRegularExpression finished(u"<think(?:ing)?>([\\s\\S]*?)</think(?:ing)?>"_s, anyCase);
    ExtractedThinking result{text, {}};
    for (const QRegularExpressionMatch &each : finished.globalMatch(text))
        result.thinking += each.captured(1);
    result.text.remove(finished);
    return {result.text.trimmed(), result.thinking.trimmed()};
}

ExtractedToolCalls plainlyExtractedToolCalls(const QString &text) {
    if (!text.contains(u"<tool_call>"_s))
        return {text, {}};
    const QRegularExpression finished(u"<tool_call>([\\s\\S]*?)</tool_call>"_s);
    ExtractedToolCalls result{text, {}};
    qsizetype ordinal = 0;
    for (const QRegularExpressionMatch &each : finished.globalMatch(text)) {
        if (const auto call = plainCall(each.captured(1).trimmed(), ordinal++))
            result.calls.append(*call);
    }
    result.text = result.text.remove(finished).trimmed();
    return result;
}

QString plainlyHiddenTags(QString text) {
    const QRegularExpression closed(
        u"<think(?:ing)?>[\\s\\S]*?</think(?:ing)?>|<tool_call>[\\s\\S]*?</tool_call>"_s, anyCase);
    const QRegularExpression open(u"<think(?:ing)?>|<tool_call>"_s, anyCase);
    text.remove(closed);
    const QRegularExpressionMatch first = open.match(text);
    return first.hasMatch() ? text.first(first.capturedStart()) : text;
}

QString taggedText(std::mt19937 &random) {
    static const QStringList pieces{u"<think>"_s,
                                    u"</think>"_s,
                                    u"<thinking>"_s,
                                    u"</thinking>"_s,
                                    u"<THINK>"_s,
                                    u"</Thinking>"_s,
                                    u"<thin\u212A>"_s,
                                    u"</thin\u212Aing>"_s,
                                    u"<th"_s,
                                    u"ink>"_s,
                                    u"<thinkin>"_s,
                                    u"<thinking"_s,
                                    u"<tool_call>"_s,
                                    u"</tool_call>"_s,
                                    u"<TOOL_CALL>"_s,
                                    u"</Tool_Call>"_s,
                                    u"<tool_"_s,
                                    u"call>"_s,
                                    u"<function="_s,
                                    u"<function=f>"_s,
                                    u"<parameter="_s,
                                    u"<parameter=a>"_s,
                                    u"<parameter=b\n>"_s,
                                    u"<parameter=>"_s,
                                    u"</parameter>"_s,
                                    u"</function>"_s,
                                    u">"_s,
                                    u"<"_s,
                                    u"</"_s,
                                    u"/"_s,
                                    u"a"_s,
                                    u"b c"_s,
                                    u"\n"_s,
                                    u" "_s,
                                    u"\u00A0"_s,
                                    u"ſ"_s,
                                    u"{\"name\":\"f\"}"_s,
                                    u"{\"name\":\"g\",\"arguments\":{\"b\":[1,null],\"a\":\"ä\"}}"_s,
                                    u" {\"name\":\"h\",\"arguments\":\"{x\"} "_s,
                                    u"{\"name\":7}"_s,
                                    u"{"_s,
                                    u"\""_s};
    QString text;
    const size_t count = random() % 16;
    for (size_t index = 0; index < count; ++index)
        text += pieces.at(static_cast<qsizetype>(random() % static_cast<size_t>(pieces.size())));
    return text;
}
