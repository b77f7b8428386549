/// One model request of a turn: what it asks, how its reply grows, and what the turn learns from it.

#include "conversation/History.h"
#include "conversation/Prompt.h"
#include "conversation/Turn.h"
#include "platform/Clock.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int maxReplyTokens = 4096;
constexpr auto publishInterval = 50ms;

Message assistantMessage(const QString &content = {}) {
    return {.id = QUuid::createUuid(), .role = Role::assistant, .content = content};
}

} // namespace

Task<RoundResult> Turn::streamRound(Round round) {
    const ChatHost *const host = m_controller->m_host;
    if (!host || !host->engineURL()) {
        m_conversation.messages.append(assistantMessage(u"Ostrelin isn't ready yet."_s));
        co_return RoundResult{.kind = RoundResult::Kind::failed, .calls = {}};
    }
    const std::optional<StreamRequest> request = requestOf(round);
    if (!request)
        co_return RoundResult{.kind = RoundResult::Kind::failed, .calls = {}};

    m_message = assistantMessage();
    m_lastWrite.reset();
    m_conversation.messages.append(m_message);
    publish();
    showStreaming(m_message.id);

    ToolCallAssembler assembler;
    try {
        const std::unique_ptr<ChunkStream> stream = open(*request, round.isFirst);
        while (true) {
            const std::optional<StreamChunk> chunk = co_await stream->next(m_stop);
            if (isForgotten())
                co_return RoundResult{};
            if (!chunk)
                break;
            take(*chunk);
            for (const ToolCallDelta &delta : chunk->toolDeltas)
                assembler.ingest(delta);
            writeSoon();
        }
    } catch (const std::exception &) {
        if (isForgotten())
            co_return RoundResult{};
        co_return failMessage();
    }
    co_return finishMessage(assembler);
}

std::optional<StreamRequest> Turn::requestOf(const Round &round) {
    const ChatHost &host = *m_controller->m_host;
    const Settings settings = host.settings();
    const std::optional<ModelTier> tier = host.activeTier();
    const QString prompt = systemPrompt({.searchMode = settings.searchMode,
                                         .memoryEnabled = settings.memoryEnabled,
                                         .supportsTools = tier && tier->supportsTools,
                                         .allowTools = allowsTools(),
                                         .memory = host.memory(),
                                         .nudge = round.nudge,
                                         .today = m_controller->m_clock.now().toLocalTime().date(),
                                         .locale = QLocale::system()});
    const FittedHistory history =
        fitHistory(m_conversation.messages, tier ? tier->contextLength : defaultContextLength);
    m_conversation.droppedCount =
        history.droppedCount > 0 ? std::optional(history.droppedCount) : std::nullopt;
    if (!tier)
        return std::nullopt;

    StreamRequest request;
    request.messages = wireMessages(history.messages, prompt);
    if (m_controller->m_points.toolList)
        request.tools = m_controller->m_points.toolList(allowsTools(), settings, tier);
    request.sampling = round.think == Thinking::on ? tier->thinkingSampling : tier->sampling;
    request.thinking = round.think;
    request.maxTokens = maxReplyTokens;
    return request;
}

LLMClient Turn::client() const {
    const ChatHost &host = *m_controller->m_host;
    return {host.engineURL().value_or(QUrl()), host.engineKey()};
}

std::unique_ptr<ChunkStream> Turn::open(const StreamRequest &request, bool isFirst) const {
    const ResponseSpeed speed = m_controller->m_host->settings().responseSpeed;
    if (m_controller->m_points.pacedStream && isFirst && speed != ResponseSpeed::full)
        return m_controller->m_points.pacedStream(client(), request, speed);
    return client().stream(request);
}

void Turn::take(const StreamChunk &chunk) {
    m_message.content += chunk.content;
    if (!chunk.reasoning.isEmpty())
        m_message.reasoning = m_message.reasoning.value_or(QString()) + chunk.reasoning;
}

void Turn::writeSoon() {
    const auto elapsed = m_controller->m_clock.elapsed();
    const auto due = m_lastWrite ? *m_lastWrite + publishInterval : elapsed;
    if (elapsed >= due)
        write();
    else if (!m_nextWrite.isRunning())
        m_nextWrite.start([&](std::stop_token stop) { return writeLater(due - elapsed, stop); });
}

/// The stream may rest now, and what it has said so far is to be seen all the same.
Task<> Turn::writeLater(std::chrono::milliseconds delay, std::stop_token stop) {
    co_await m_controller->m_clock.sleep(delay, stop);
    if (!stop.stop_requested() && !isForgotten())
        write();
}

void Turn::write() {
    m_nextWrite.cancel();
    m_lastWrite = m_controller->m_clock.elapsed();
    auto &messages = m_conversation.messages;
    const auto place = std::find_if(messages.rbegin(), messages.rend(),
                                    [&](const Message &other) { return other.id == m_message.id; });
    if (place != messages.rend())
        *place = m_message;
    m_conversation.updatedAt = m_controller->now();
    publish();
}

RoundResult Turn::finishMessage(const ToolCallAssembler &assembler) {
    const TurnPoints &points = m_controller->m_points;
    if (points.extractThinking) {
        const ExtractedThinking found = points.extractThinking(m_message.content);
        QStringList parts{m_message.reasoning.value_or(QString()), found.thinking};
        parts.removeAll(QString());
        if (!found.thinking.isEmpty())
            m_message.reasoning = parts.join(u"\n\n"_s);
        m_message.content = found.text;
    }
    QList<ToolCall> writtenCalls;
    if (points.extractToolCalls) {
        ExtractedToolCalls found = points.extractToolCalls(m_message.content);
        m_message.content = found.text;
        writtenCalls = std::move(found.calls);
    }
    QList<ToolCall> calls = assembler.finished();
    calls.removeIf([](const ToolCall &call) { return call.name.isEmpty(); });
    if (calls.isEmpty())
        calls = writtenCalls;
    // What a model says after its last round is the reply, whatever it calls.
    if (m_round > lastRoundWithTools)
        calls.clear();
    if (!calls.isEmpty())
        m_message.toolCalls = calls;
    if (m_message.reasoning && m_message.reasoning->isEmpty())
        m_message.reasoning.reset();
    write();
    showStreaming(std::nullopt);
    if (calls.isEmpty())
        return {};
    return {.kind = RoundResult::Kind::toolCalls, .calls = calls};
}

RoundResult Turn::failMessage() {
    if (isCancelled()) {
        write();
        return {};
    }
    if (m_message.content.isEmpty())
        m_message.content = u"Ostrelin couldn't complete that reply."_s;
    write();
    return {.kind = RoundResult::Kind::failed, .calls = {}};
}
