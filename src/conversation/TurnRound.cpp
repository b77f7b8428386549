/// One model request of a turn: what it asks, how its reply grows, and what the turn learns from it.

#include "conversation/History.h"
#include "conversation/Prompt.h"
#include "conversation/Turn.h"
#include "platform/Clock.h"

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

    Message message = assistantMessage();
    m_conversation.messages.append(message);
    publish();
    showStreaming(message.id);

    ToolCallAssembler assembler;
    std::optional<QString> lastFinish;
    std::optional<std::chrono::milliseconds> lastPublish;
    try {
        const std::unique_ptr<ChunkStream> stream = open(*request, round.isFirst);
        while (true) {
            const std::optional<StreamChunk> chunk = co_await stream->next(m_stop);
            if (isForgotten())
                co_return RoundResult{};
            if (!chunk)
                break;
            take(*chunk, message);
            for (const ToolCallDelta &delta : chunk->toolDeltas)
                assembler.ingest(delta);
            if (chunk->finishReason && *chunk->finishReason != u"done"_s)
                lastFinish = chunk->finishReason;
            const auto elapsed = m_controller->m_clock.elapsed();
            if (!lastPublish || elapsed - *lastPublish >= publishInterval) {
                lastPublish = elapsed;
                write(message);
            }
        }
    } catch (const std::exception &) {
        if (isForgotten())
            co_return RoundResult{};
        co_return failWith(message);
    }
    co_return finishMessage(message, assembler, lastFinish);
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
    if (allowsTools() && m_controller->m_points.toolList)
        request.tools = m_controller->m_points.toolList();
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

void Turn::take(const StreamChunk &chunk, Message &message) {
    message.content += chunk.content;
    if (!chunk.reasoning.isEmpty())
        message.reasoning = message.reasoning.value_or(QString()) + chunk.reasoning;
}

RoundResult Turn::finishMessage(Message &message, ToolCallAssembler &assembler,
                                std::optional<QString> lastFinish) {
    const TurnPoints &points = m_controller->m_points;
    if (points.extractThinking) {
        const TurnPoints::RecoveredThinking found = points.extractThinking(message.content);
        QStringList parts{message.reasoning.value_or(QString()), found.reasoning};
        parts.removeAll(QString());
        if (!found.reasoning.isEmpty())
            message.reasoning = parts.join(u"\n\n"_s);
        message.content = found.content;
    }
    QList<ToolCall> writtenCalls;
    if (points.extractToolCalls) {
        TurnPoints::RecoveredCalls found = points.extractToolCalls(message.content);
        message.content = found.content;
        writtenCalls = std::move(found.calls);
    }
    QList<ToolCall> calls = assembler.finished();
    calls.removeIf([](const ToolCall &call) { return call.name.isEmpty(); });
    if (calls.isEmpty())
        calls = writtenCalls;
    if (!calls.isEmpty()) {
        message.toolCalls = calls;
        lastFinish = u"tool_calls"_s;
    }
    if (message.reasoning && message.reasoning->isEmpty())
        message.reasoning.reset();
    write(message);
    showStreaming(std::nullopt);
    if (lastFinish == u"tool_calls"_s && !calls.isEmpty())
        return {.kind = RoundResult::Kind::toolCalls, .calls = calls};
    return {};
}

RoundResult Turn::failWith(Message &message) {
    if (isCancelled()) {
        write(message);
        return {};
    }
    if (message.content.isEmpty())
        message.content = u"Ostrelin couldn't complete that reply."_s;
    write(message);
    return {.kind = RoundResult::Kind::failed, .calls = {}};
}
