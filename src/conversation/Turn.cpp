#include "conversation/Turn.h"

#include "conversation/MessagePlaces.h"

using namespace Qt::StringLiterals;

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
      m_era(controller.m_era),
      m_conversation(std::move(conversation)),
      m_request(std::move(request)),
      m_stop(stop),
      m_pageOfferAccepted(m_request.pageAccepted) {}

Task<> Turn::run() {
    m_number = ++m_controller->m_turns;
    m_controller->m_generatingID = m_conversation.id;
    m_foundURLs = m_controller->m_foundURLs.value(m_conversation.id);
    appendQuestion();
    m_controller->setIsGenerating(true);
    m_controller->setShowSearchHint(false);

    Round round{.think = m_request.think, .nudge = m_request.nudge, .isFirst = true};
    while (true) {
        if (isCancelled())
            co_return saveAndReset();
        const RoundResult result = co_await streamRound(round);
        if (isForgotten())
            co_return;
        if (isCancelled())
            co_return saveAndReset();
        if (result.kind == RoundResult::Kind::failed) {
            save();
            publish();
            reset();
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
    save();
    publish();
    m_controller->reloadSummaries();
}

Task<bool> Turn::runTools(QList<ToolCall> calls) {
    for (const ToolCall &call : calls) {
        if (isCancelled()) {
            reset();
            co_return false;
        }
        const QString result = co_await runTool(call);
        if (isForgotten())
            co_return false;
        m_conversation.messages.append({.id = QUuid::createUuid(),
                                        .role = Role::tool,
                                        .content = result,
                                        .reasoning = {},
                                        .toolCalls = {},
                                        .toolCallId = call.id});
    }
    m_conversation.updatedAt = m_controller->now();
    save();
    publish();
    co_return true;
}

Task<QString> Turn::runTool(ToolCall call) {
    if (!m_controller->m_points.runTool)
        co_return u"Unknown tool."_s;
    const auto show = [this] {
        if (!isForgotten())
            publish();
    };
    const TurnPoints::ToolContext context{.conversation = m_conversation,
                                          .pageOfferAccepted = m_pageOfferAccepted,
                                          .foundURLs = m_foundURLs,
                                          .publish = show,
                                          .host = m_controller->m_host,
                                          .consent = m_controller->m_consent};
    const QString result = co_await m_controller->m_points.runTool(call, context, m_stop);
    if (!isForgotten())
        m_controller->m_foundURLs[m_conversation.id].unite(m_foundURLs);
    co_return result;
}

Task<> Turn::finish() {
    const TurnPoints &points = m_controller->m_points;
    if (points.finishPage) {
        if (const auto draft = points.finishPage(m_conversation, m_pageOfferAccepted, m_controller->now()))
            m_controller->setPageDraft(draft);
    }
    m_pageOfferAccepted = false;
    save();
    publish();
    m_controller->testSearchHint(m_conversation);
    co_await makeTitle();
    if (!isForgotten())
        reset();
}

Task<> Turn::makeTitle() {
    const ChatHost *const host = m_controller->m_host;
    const std::optional<ModelTier> tier = host ? host->activeTier() : std::nullopt;
    if (!m_controller->m_points.makeTitle || !tier || !host->engineURL())
        co_return;
    m_conversation.title = m_controller->titleOf(m_conversation);
    const std::optional<QString> title =
        co_await m_controller->m_points.makeTitle(client(), tier->sampling, m_conversation, m_stop);
    if (title && !isForgotten() && !isCancelled())
        m_controller->takeMadeTitle(m_conversation.id, *title);
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
    if (!isForgotten())
        saveAndReset();
}

void Turn::saveAndReset() {
    save();
    reset();
}

bool Turn::isLatest() const {
    return m_controller->m_turns == m_number;
}

bool Turn::isSuperseded() const {
    return !isLatest() && m_controller->m_generatingID == m_conversation.id;
}

void Turn::save() const {
    if (!isSuperseded())
        m_controller->save(m_conversation);
}

void Turn::publish() const {
    if (!isSuperseded())
        m_controller->publish(m_conversation);
}

void Turn::showStreaming(const std::optional<QUuid> &id) const {
    if (isLatest())
        m_controller->setStreamingID(id);
}

void Turn::reset() const {
    if (isLatest())
        m_controller->resetTurn();
}
