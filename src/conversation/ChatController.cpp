#include "conversation/ChatController.h"

#include "conversation/Turn.h"
#include "platform/Clock.h"

using namespace Qt::StringLiterals;

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
    startTurn(*m_conversation, {.question = UserMessage{trimmed, attachments}, .think = think});
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

void ChatController::stop() {
    m_generateTask.cancel();
    resetTurn();
}

void ChatController::newChat() {
    const Conversation chat = newConversation(now());
    save(chat);
    show(chat);
    reloadSummaries();
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
    if (m_conversation) {
        m_conversation.reset();
        Q_EMIT conversationChanged();
    }
    if (!m_summaries.isEmpty()) {
        m_summaries.clear();
        Q_EMIT summariesChanged();
    }
    setUpgradeBanner(std::nullopt);
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

void ChatController::publish(const Conversation &conversation) {
    if (m_conversation && m_conversation->id == conversation.id)
        show(conversation);
}

void ChatController::show(const Conversation &conversation) {
    m_conversation = conversation;
    Q_EMIT conversationChanged();
}

void ChatController::save(const Conversation &conversation) {
    m_store.save(conversation);
}

void ChatController::resetTurn() {
    m_generatingID.reset();
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
