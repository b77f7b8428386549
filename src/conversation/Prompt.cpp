#include "conversation/Prompt.h"

#include "client/StrictJson.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

QString searchSentence(const PromptInputs &inputs) {
    const bool offered = inputs.searchMode != SearchMode::off && inputs.supportsTools && inputs.allowTools;
    if (!offered)
        return u"You cannot access the internet. If asked about recent events, say so."_s;
    if (inputs.searchMode == SearchMode::ask)
        return u"You can use the web_search tool when current or factual information would help. The user must approve each search."_s;
    return u"You can use the web_search tool when current or factual information would help."_s;
}

const QString pageInstruction =
    u"When a formatted page (headings, tables, charts or cards) would present the answer better than a "
    "chat reply, call the offer_page tool to ask first. Build the page only after the user agrees, then "
    "reply with a single ```page block containing Markdown. Inside it you may use optional directive "
    "blocks (metric, chart, line, donut, progress, callout, timeline, flow, compare, cards, spec); a color "
    "may follow the name, like ```chart:green or ```callout:warning. Use \"Label: value\" lines in metric, "
    "chart, line, donut and progress; \"a || b\" rows in compare, cards and spec; and \"A -> B -> C\" in "
    "flow."_s;

QString memorySection(const PromptInputs &inputs) {
    const QString memory = inputs.memory.trimmed();
    if (!inputs.memoryEnabled || memory.isEmpty())
        return {};
    return u"Things you remember about the user, written in their own memory file. Use them when "
           "relevant, and call remember to suggest a new durable fact (the user approves it first):\n"_s +
           memory;
}

QString userText(const Message &message) {
    QStringList parts;
    for (const Attachment &attachment : message.attachments.value_or(QList<Attachment>()))
        parts.append(u"Attached file: "_s + attachment.name + u"\n\n"_s + attachment.text);
    if (!message.content.isEmpty() || parts.isEmpty())
        parts.append(message.content);
    return parts.join(u"\n\n"_s);
}

/// The arguments as the model wrote them, as far as the engine can read that. What is no JSON, such as those
/// of a call that was stopped in the middle, goes out as no arguments: the engine would refuse this chat for
/// ever.
QString wireArguments(const QString &arguments) {
    const QString readable = strictJson(arguments);
    return readable.isEmpty() ? u"{}"_s : readable;
}

QJsonArray wireCalls(const QList<ToolCall> &calls) {
    QJsonArray wire;
    for (const ToolCall &call : calls) {
        const QJsonObject function{{u"name"_s, call.name}, {u"arguments"_s, wireArguments(call.arguments)}};
        wire.append(QJsonObject{{u"id"_s, call.id}, {u"type"_s, u"function"_s}, {u"function"_s, function}});
    }
    return wire;
}

QJsonObject wireMessage(const Message &message) {
    switch (message.role) {
    case Role::user:
        return {{u"role"_s, u"user"_s}, {u"content"_s, userText(message)}};
    case Role::tool: {
        QJsonObject wire{{u"role"_s, u"tool"_s}, {u"content"_s, message.content}};
        if (message.toolCallId)
            wire[u"tool_call_id"_s] = *message.toolCallId;
        return wire;
    }
    default: {
        QJsonObject wire{{u"role"_s, u"assistant"_s}, {u"content"_s, message.content}};
        if (message.toolCalls && !message.toolCalls->isEmpty())
            wire[u"tool_calls"_s] = wireCalls(*message.toolCalls);
        return wire;
    }
    }
}

} // namespace

QString systemPrompt(const PromptInputs &inputs) {
    QString prompt =
        u"You are Ostrelin, a helpful assistant running entirely on the user's Mac.\nToday's date is "_s;
    prompt += inputs.locale.toString(inputs.today, QLocale::LongFormat);
    prompt += u". Your knowledge has a cutoff and may be out of date.\n"_s;
    prompt += searchSentence(inputs);
    prompt += u"\nNever claim to have searched unless a search result is present.\n"
              "Be concise, warm, and use Markdown when helpful.\n"_s;
    if (inputs.supportsTools)
        prompt += pageInstruction;
    prompt += u'\n';
    prompt += memorySection(inputs);
    if (inputs.nudge)
        prompt += u'\n' + *inputs.nudge;
    return prompt;
}

QJsonArray wireMessages(const QList<Message> &messages, const QString &systemPrompt) {
    QJsonArray wire{QJsonObject{{u"role"_s, u"system"_s}, {u"content"_s, systemPrompt}}};
    for (const Message &message : messages) {
        if (message.role != Role::system)
            wire.append(wireMessage(message));
    }
    return wire;
}
