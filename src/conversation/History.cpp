#include "conversation/History.h"

#include "records/Characters.h"

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

qint64 tokensOf(qsizetype characters) {
    constexpr double charactersPerToken = 3.5;
    return std::max<qint64>(1, std::llround(std::ceil(static_cast<double>(characters) / charactersPerToken)));
}

qint64 tokensOfMessage(const Message &message) {
    constexpr qint64 overhead = 8;
    // Joined before they are counted: a cluster may span the border of two.
    QString attached;
    for (const Attachment &attachment : message.attachments.value_or(QList<Attachment>()))
        attached += attachment.text;
    QString arguments;
    for (const ToolCall &call : message.toolCalls.value_or(QList<ToolCall>()))
        arguments += call.arguments;
    return tokensOf(characterCount(message.content)) + tokensOf(characterCount(attached)) +
           tokensOf(characterCount(arguments)) + overhead;
}

/// How many messages at `start` have to be dropped together, `end` being where the head ends.
qsizetype oldestBlockSize(const QList<Message> &messages, qsizetype start, qsizetype end) {
    const Message &first = messages.at(start);
    const QList<ToolCall> calls = first.toolCalls.value_or(QList<ToolCall>());
    const auto belongs = [&](const Message &message) {
        if (message.role != Role::tool)
            return false;
        if (first.role == Role::tool)
            return true;
        return message.toolCallId && std::any_of(calls.begin(), calls.end(), [&](const ToolCall &call) {
                   return call.id == *message.toolCallId;
               });
    };
    const bool hasCompany = first.role == Role::tool || (first.role == Role::assistant && !calls.isEmpty());
    qsizetype next = start + 1;
    while (hasCompany && next < end && belongs(messages.at(next)))
        ++next;
    return next - start;
}

/// The attachment with the most characters, the earliest of several; nothing if none has text.
Attachment *largestAttachment(Message &message) {
    if (!message.attachments)
        return nullptr;
    Attachment *largest = nullptr;
    qsizetype most = 0;
    for (Attachment &attachment : *message.attachments) {
        const qsizetype count = characterCount(attachment.text);
        if (count > most) {
            most = count;
            largest = &attachment;
        }
    }
    return largest;
}

QString firstHalf(const QString &text) {
    return firstCharacters(text, characterCount(text) / 2).toString();
}

/// One cut. Gives the place of the message that was cut, or -1 if there is nothing left to cut.
qsizetype cutOnce(QList<Message> &messages) {
    for (qsizetype place = 0; place < messages.size(); ++place) {
        if (!messages.at(place).attachments)
            continue;
        if (Attachment *attachment = largestAttachment(messages[place])) {
            attachment->text = firstHalf(attachment->text) + u"\n\n…(trimmed to fit this Mac's memory)"_s;
            return place;
        }
    }
    for (qsizetype place = messages.size() - 1; place >= 0; --place) {
        if (messages.at(place).role != Role::user)
            continue;
        Message &question = messages[place];
        if (question.content.isEmpty())
            return -1;
        question.content = firstHalf(question.content);
        return place;
    }
    return -1;
}

QList<Message> shrink(QList<Message> messages, qint64 tokens, qint64 budget) {
    constexpr int passes = 64;
    for (int pass = 0; pass < passes && tokens > budget; ++pass) {
        const QList<Message> before = messages;
        const qsizetype place = cutOnce(messages);
        if (place < 0)
            break;
        tokens += tokensOfMessage(messages.at(place)) - tokensOfMessage(before.at(place));
    }
    return messages;
}

} // namespace

qint64 estimateTokens(const QList<Message> &messages) {
    return std::accumulate(messages.begin(), messages.end(), qint64(0),
                           [](qint64 sum, const Message &message) { return sum + tokensOfMessage(message); });
}

FittedHistory fitHistory(const QList<Message> &messages, qint64 contextLength) {
    const auto budget = static_cast<qint64>(static_cast<double>(contextLength) * 0.75);
    const auto isUser = [](const Message &message) { return message.role == Role::user; };
    const auto lastUser = std::find_if(messages.rbegin(), messages.rend(), isUser);
    if (lastUser == messages.rend())
        return {messages, 0};
    const qsizetype headEnd = messages.size() - 1 - (lastUser - messages.rbegin());

    // One count a message: a long chat is fitted before every request.
    QList<qint64> counts;
    counts.reserve(messages.size());
    for (const Message &message : messages)
        counts.append(tokensOfMessage(message));
    qint64 tokens = std::accumulate(counts.begin(), counts.end(), qint64(0));
    qsizetype start = 0;
    while (tokens > budget && start < headEnd) {
        const qsizetype block = oldestBlockSize(messages, start, headEnd);
        tokens -= std::accumulate(counts.begin() + start, counts.begin() + start + block, qint64(0));
        start += block;
    }
    QList<Message> kept = messages.sliced(start);
    if (tokens > budget)
        kept = shrink(std::move(kept), tokens, budget);
    return {kept, start};
}
