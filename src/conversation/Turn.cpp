#include "conversation/Turn.h"

#include "conversation/History.h"
#include "conversation/Prompt.h"
#include "platform/Clock.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int maxReplyTokens = 4096;
constexpr int lastRoundWithTools = 3;
constexpr auto publishInterval = 50ms;

Message assistantMessage(const QString &content = {}) {
    return {.id = QUuid::createUuid(), .role = Role::assistant, .content = content};
}

/// The place of the last assistant message, or -1.
qsizetype lastAssistant(const QList<Message> &messages) {
    const auto found = std::find_if(messages.crbegin(), messages.crend(),
                                    [](const Message &message) { return message.role == Role::assistant; });
    return std::distance(found, messages.crend()) - 1;
}

} // namespace

Task<> generate(ChatController *controller, Conversation conversation, TurnRequest request,
                std::stop_token stop) {
    Turn turn(*controller, std::move(conversation), std::move(request), stop);
    try {
        co_await turn.run();
    } catch (...) {
        // A service that fails must not leave the chat busy for ever.
        turn.abandon();
        throw;
    }
}

Turn::Turn(ChatController &controller, Conversation conversation, TurnRequest request, std::stop_token stop)
    : m_controller(&controller),
      m_conversation(std::move(conversation)),
      m_request(std::move(request)),
      m_stop(stop),
      m_pageOfferAccepted(m_request.pageAccepted) {}

Task<> Turn::run() {
    m_controller->m_generatingID = m_conversation.id;
    appendQuestion();
    m_controller->setIsGenerating(true);

    Round round{.think = m_request.think, .nudge = std::nullopt, .isFirst = true};
    while (true) {
        if (isCancelled())
            co_return saveAndReset();
        const RoundResult result = co_await streamRound(round);
        if (!m_controller)
            co_return;
        if (isCancelled())
            co_return saveAndReset();
        if (result.kind == RoundResult::Kind::failed) {
            m_controller->save(m_conversation);
            m_controller->publish(m_conversation);
            m_controller->resetTurn();
            co_return;
        }
        if (result.kind == RoundResult::Kind::toolCalls) {
            ++m_round;
            const bool wentThrough = co_await runTools(result.calls);
            if (!wentThrough)
                co_return;
            round = {.think = Thinking::off, .nudge = std::nullopt, .isFirst = false};
        } else if (const auto correction = dueCorrection()) {
            m_conversation.messages.removeAt(lastAssistant(m_conversation.messages));
            m_pageRetried = true;
            round = {.think = Thinking::off, .nudge = correction, .isFirst = m_round == 0};
        } else {
            co_await finish();
            co_return;
        }
    }
}

void Turn::appendQuestion() {
    if (!m_request.question)
        return;
    Message message{.id = QUuid::createUuid(), .role = Role::user, .content = m_request.question->text};
    if (!m_request.question->attachments.isEmpty())
        message.attachments = m_request.question->attachments;
    m_conversation.messages.append(message);
    m_conversation.updatedAt = m_controller->now();
    m_controller->save(m_conversation);
    m_controller->publish(m_conversation);
    m_controller->reloadSummaries();
}

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
    m_controller->publish(m_conversation);
    m_controller->setStreamingID(message.id);

    ToolCallAssembler assembler;
    std::optional<QString> lastFinish;
    std::optional<std::chrono::milliseconds> lastPublish;
    try {
        const std::unique_ptr<ChunkStream> stream = open(*request, round.isFirst);
        while (true) {
            const std::optional<StreamChunk> chunk = co_await stream->next(m_stop);
            if (!m_controller)
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
        if (!m_controller)
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

std::unique_ptr<ChunkStream> Turn::open(const StreamRequest &request, bool isFirst) const {
    const ChatHost &host = *m_controller->m_host;
    const LLMClient client{host.engineURL().value_or(QUrl()), host.engineKey()};
    const ResponseSpeed speed = host.settings().responseSpeed;
    if (m_controller->m_points.pacedStream && isFirst && speed != ResponseSpeed::full)
        return m_controller->m_points.pacedStream(client, request, speed);
    return client.stream(request);
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
    m_controller->setStreamingID(std::nullopt);
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

void Turn::write(const Message &message) {
    auto &messages = m_conversation.messages;
    const auto place = std::find_if(messages.rbegin(), messages.rend(),
                                    [&](const Message &other) { return other.id == message.id; });
    if (place != messages.rend())
        *place = message;
    m_conversation.updatedAt = m_controller->now();
    m_controller->publish(m_conversation);
}

Task<bool> Turn::runTools(QList<ToolCall> calls) {
    for (const ToolCall &call : calls) {
        if (isCancelled()) {
            m_controller->resetTurn();
            co_return false;
        }
        QString result = u"Unknown tool."_s;
        if (m_controller->m_points.runTool)
            result =
                co_await m_controller->m_points.runTool(call, {m_conversation, m_pageOfferAccepted}, m_stop);
        if (!m_controller)
            co_return false;
        m_conversation.messages.append({.id = QUuid::createUuid(),
                                        .role = Role::tool,
                                        .content = result,
                                        .reasoning = {},
                                        .toolCalls = {},
                                        .toolCallId = call.id});
    }
    m_conversation.updatedAt = m_controller->now();
    m_controller->save(m_conversation);
    m_controller->publish(m_conversation);
    co_return true;
}

Task<> Turn::finish() {
    const TurnPoints &points = m_controller->m_points;
    if (points.finishPage)
        points.finishPage(m_conversation, m_pageOfferAccepted);
    m_pageOfferAccepted = false;
    m_controller->save(m_conversation);
    m_controller->publish(m_conversation);
    if (points.testSearchHint)
        points.testSearchHint(m_conversation);
    if (points.titleConversation)
        co_await points.titleConversation(m_conversation, m_stop);
    if (m_controller)
        m_controller->resetTurn();
}

std::optional<QString> Turn::dueCorrection() const {
    if (!m_pageOfferAccepted || m_pageRetried || !m_controller->m_points.pageCorrection)
        return std::nullopt;
    const qsizetype last = lastAssistant(m_conversation.messages);
    if (last < 0)
        return std::nullopt;
    return m_controller->m_points.pageCorrection(m_conversation.messages.at(last).content);
}

bool Turn::allowsTools() const {
    return m_round <= lastRoundWithTools && !m_pageOfferAccepted;
}

void Turn::abandon() {
    if (m_controller)
        saveAndReset();
}

void Turn::saveAndReset() {
    m_controller->save(m_conversation);
    m_controller->resetTurn();
}
