#include "conversation/ChatController.h"

#include "conversation/MessagePlaces.h"
#include "conversation/PageReply.h"
#include "conversation/Turn.h"
#include "pages/PageStore.h"
#include "platform/Clock.h"
#include "platform/MemoryPressure.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A chat that a crash or a stop left in the midst of its tool calls is one that the model can't read. True
/// if there was something to repair.
bool answerOpenCalls(Conversation &chat) {
    QList<Message> &messages = chat.messages;
    const qsizetype caller = lastAssistant(messages);
    const bool isLast =
        caller >= 0 && std::all_of(messages.cbegin() + caller + 1, messages.cend(),
                                   [](const Message &message) { return message.role == Role::tool; });
    if (!isLast)
        return false;
    const QList<ToolCall> calls = messages.at(caller).toolCalls.value_or(QList<ToolCall>());
    const qsizetype before = messages.size();
    for (const ToolCall &call : calls) {
        // An id may have been another call's before.
        const bool isAnswered =
            std::any_of(messages.cbegin() + caller + 1, messages.cend(),
                        [&](const Message &message) { return message.toolCallId == call.id; });
        if (!isAnswered)
            messages.append({.id = QUuid::createUuid(),
                             .role = Role::tool,
                             .content = u"The search was interrupted."_s,
                             .reasoning = {},
                             .toolCalls = {},
                             .toolCallId = call.id});
    }
    return messages.size() > before;
}

QSet<QString> foundURLs(const Conversation &chat) {
    QSet<QString> urls;
    for (const Message &message : chat.messages) {
        for (const SearchSource &source : message.searchEvent.value_or(SearchEvent()).sources)
            urls.insert(source.url);
    }
    return urls;
}

} // namespace

ChatController::ChatController(ChatHost *host, Clock &clock, TurnPoints points, QObject *parent)
    : QObject(parent),
      m_host(host),
      m_clock(clock),
      m_points(std::move(points)) {}

ChatController::~ChatController() = default;

void ChatController::send(const QString &text, Thinking think, const QList<Attachment> &attachments) {
    const QString trimmed = text.trimmed();
    if ((trimmed.isEmpty() && attachments.isEmpty()) || m_isGenerating)
        return;
    if (!m_conversation)
        newChat();
    Conversation chat = *m_conversation;
    answerOpenCalls(chat);
    startTurn(chat, {.question = UserMessage{trimmed, attachments}, .think = think});
}

void ChatController::regenerate() {
    if (!m_conversation || m_isGenerating)
        return;
    Conversation chat = *m_conversation;
    while (!chat.messages.isEmpty() && chat.messages.last().role != Role::user)
        chat.messages.removeLast();
    if (chat.messages.isEmpty())
        return;
    const Message question = chat.messages.takeLast();
    publish(chat);
    save(chat);
    const UserMessage again{question.content, question.attachments.value_or(QList<Attachment>())};
    startTurn(chat, {.question = again});
}

void ChatController::retryPage() {
    if (!m_conversation || m_isGenerating)
        return;
    Conversation chat = *m_conversation;
    const qsizetype reply = lastAssistant(chat.messages);
    if (reply >= 0 && chat.messages.at(reply).pageFailed == true)
        chat.messages.removeAt(reply);
    publish(chat);
    startTurn(chat, {.pageAccepted = true, .nudge = pageCorrection()});
}

void ChatController::stop() {
    m_generateTask.cancel();
    resetTurn();
}

void ChatController::newChat() {
    const Conversation chat = newConversation(now());
    save(chat);
    show(chat);
    leavePreviousChat();
    reloadSummaries();
}

void ChatController::openConversation(const QUuid &id) {
    // What a turn has said so far isn't on disk yet.
    std::optional<Conversation> chat =
        m_generatingID == id && m_generatingChat ? m_generatingChat : m_store.load(id);
    if (!chat)
        return;
    if (m_generatingID != id && answerOpenCalls(*chat))
        save(*chat);
    m_foundURLs[id].unite(foundURLs(*chat));
    show(*chat);
    leavePreviousChat();
    reloadSummaries();
}

void ChatController::leavePreviousChat() {
    setShowSearchHint(false);
    setPageDraft(std::nullopt);
}

void ChatController::renameConversation(const QUuid &id, const QString &title) {
    std::optional<Conversation> chat = m_store.load(id);
    if (!chat)
        return;
    m_givenTitles[id] = title;
    chat->title = title;
    chat->updatedAt = now();
    save(*chat);
    if (m_generatingChat && m_generatingChat->id == id)
        m_generatingChat->title = title;
    if (m_conversation && m_conversation->id == id) {
        m_conversation->title = title;
        m_conversation->updatedAt = chat->updatedAt;
        Q_EMIT conversationChanged();
    }
    reloadSummaries();
}

QString ChatController::titleOf(const Conversation &chat) const {
    return m_givenTitles.value(chat.id, chat.title);
}

void ChatController::takeMadeTitle(const QUuid &id, const QString &title) {
    const std::optional<Conversation> chat = m_store.load(id);
    if (chat && chat->title == defaultTitle)
        renameConversation(id, title);
}

void ChatController::deleteConversation(const QUuid &id) {
    if (m_generatingID == id)
        stop();
    m_deleted.insert(id);
    m_store.remove(id);
    if (m_conversation && m_conversation->id == id)
        newChat();
    else
        reloadSummaries();
}

void ChatController::openPage(const PageSnapshot &page) {
    setPageDraft(draftOf(page, now()));
}

void ChatController::savePageDraft() {
    if (!m_pageDraft)
        return;
    PageDocument page = *m_pageDraft;
    page.updatedAt = now();
    savePage(page);
    closePageDraft();
}

void ChatController::closePageDraft() {
    setPageDraft(std::nullopt);
}

void ChatController::startMemoryWatch() {
    m_memorySource = std::make_unique<MemoryPressure>(this);
    connect(m_memorySource.get(), &MemoryPressure::critical, this, &ChatController::takeMemoryPressure);
}

void ChatController::takeMemoryPressure() {
    if (m_isGenerating)
        stop();
    setMemoryWarning(u"Your Mac is running low on memory. Closing other apps will help, or switch to a "
                     "lighter model."_s);
}

void ChatController::runSchedule(const QString &name, const QString &prompt) {
    if (m_isGenerating)
        return;
    Conversation chat = newConversation(now(), name.isEmpty() ? u"Scheduled run"_s : name);
    chat.messages.append({.id = QUuid::createUuid(), .role = Role::user, .content = prompt});
    show(chat);
    save(chat);
    reloadSummaries();
    startTurn(chat, {});
}

void ChatController::reloadSummaries() {
    const QList<ConversationSummary> summaries = m_store.list();
    if (m_summaries == summaries)
        return;
    m_summaries = summaries;
    Q_EMIT summariesChanged();
}

void ChatController::resetAll() {
    ++m_era;
    stop();
    m_memorySource.reset();
    if (m_conversation) {
        m_conversation.reset();
        Q_EMIT conversationChanged();
    }
    if (!m_summaries.isEmpty()) {
        m_summaries.clear();
        Q_EMIT summariesChanged();
    }
    leavePreviousChat();
    m_foundURLs.clear();
    setMemoryWarning(std::nullopt);
    setUpgradeBanner(std::nullopt);
}

void ChatController::testSearchHint(const Conversation &conversation) {
    const bool isOnScreen = m_conversation && m_conversation->id == conversation.id;
    const std::optional<ModelTier> tier = m_host ? m_host->activeTier() : std::nullopt;
    // Nobody is offered what their model can't do.
    if (m_points.suggestsSearch && isOnScreen && tier && tier->supportsTools)
        setShowSearchHint(m_points.suggestsSearch(m_host->settings(), conversation));
}

void ChatController::setShowSearchHint(bool shows) {
    if (std::exchange(m_showSearchHint, shows) != shows)
        Q_EMIT showSearchHintChanged();
}

void ChatController::setPageDraft(const std::optional<PageDocument> &draft) {
    if (std::exchange(m_pageDraft, draft) != draft)
        Q_EMIT pageDraftChanged();
}

void ChatController::setMemoryWarning(const std::optional<QString> &text) {
    if (std::exchange(m_memoryWarning, text) != text)
        Q_EMIT memoryWarningChanged();
}

void ChatController::setUpgradeBanner(const std::optional<QString> &text) {
    if (std::exchange(m_upgradeBanner, text) != text)
        Q_EMIT upgradeBannerChanged();
}

QDateTime ChatController::now() const {
    return QDateTime::fromSecsSinceEpoch(m_clock.now().toSecsSinceEpoch(), Qt::UTC);
}

void ChatController::startTurn(const Conversation &conversation, const TurnRequest &request) {
    m_generateTask.start([&](std::stop_token stop) { return generate(this, conversation, request, stop); });
}

void ChatController::publish(Conversation conversation) {
    conversation.title = titleOf(conversation);
    if (m_generatingID == conversation.id)
        m_generatingChat = conversation;
    if (m_conversation && m_conversation->id == conversation.id)
        show(conversation);
}

void ChatController::show(const Conversation &conversation) {
    m_conversation = conversation;
    Q_EMIT conversationChanged();
}

void ChatController::save(Conversation conversation) {
    conversation.title = titleOf(conversation);
    if (!m_deleted.contains(conversation.id))
        m_store.save(conversation);
}

void ChatController::resetTurn() {
    m_generatingID.reset();
    m_generatingChat.reset();
    m_consent.refuseAll();
    setStreamingID(std::nullopt);
    setIsGenerating(false);
}

void ChatController::setIsGenerating(bool isGenerating) {
    if (std::exchange(m_isGenerating, isGenerating) != isGenerating)
        Q_EMIT isGeneratingChanged();
}

void ChatController::setStreamingID(const std::optional<QUuid> &id) {
    if (std::exchange(m_streamingID, id) != id)
        Q_EMIT streamingIDChanged();
}
