#include "screens/ChatScreenModel.h"

#include "conversation/DisplayText.h"
#include "conversation/MessagePlaces.h"
#include "screens/UpdateNotice.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

using Kind = MessageRowModel::Kind;

MessageRowModel questionRow(const Message &message) {
    MessageRowModel row{message.id, Kind::user, message.content};
    if (!message.attachments)
        return row;
    for (const Attachment &attachment : *message.attachments)
        row.attachments.append(attachment.name);
    // Files that go without a word need no bubble.
    if (row.text.trimmed().isEmpty())
        row.text.clear();
    return row;
}

/// The message that asks.
QUuid messageOf(const Asked &asked) {
    return std::visit(
        [](const auto &card) {
            if constexpr (requires { card.messageID; })
                return card.messageID;
            else
                return QUuid();
        },
        asked);
}

/// The card that is open: a turn asks one thing at a time.
Asked askedOf(const ChatScreenState &state) {
    if (state.pendingPermission)
        return *state.pendingPermission;
    if (state.pendingPageOffer)
        return *state.pendingPageOffer;
    if (state.pendingMemory)
        return *state.pendingMemory;
    return {};
}

/// The reply that is being written, or whose tools are at work and will be answered.
std::optional<QUuid> writtenMessage(const ChatScreenState &state) {
    const QList<Message> &messages = state.conversation->messages;
    const bool isAtWork = state.isGenerating && state.generatingID == state.conversation->id &&
                          std::holds_alternative<std::monostate>(askedOf(state));
    if (state.streamingID || !isAtWork)
        return state.streamingID;
    const qsizetype caller = lastAssistant(messages);
    const bool hasCalled = caller >= 0 && messages.at(caller).toolCalls;
    return hasCalled ? std::optional(messages.at(caller).id) : std::nullopt;
}

std::optional<MessageRowModel> rowOf(const Message &message, const std::optional<QUuid> &streamingID,
                                     const Asked &asked) {
    if (message.role == Role::user)
        return questionRow(message);
    if (message.role != Role::assistant)
        return std::nullopt;
    const bool isStreaming = message.id == streamingID;
    MessageRowModel row{.id = message.id, .kind = Kind::assistant, .isStreaming = isStreaming};
    // A finished reply has been repaired, and is drawn as it stands.
    row.text = isStreaming ? displayText(message.content) : message.content;
    row.reasoning = message.reasoning.value_or(QString());
    row.extras = {.search = message.searchEvent,
                  .page = message.page,
                  .hasFailedPage = message.pageFailed == true,
                  .asked = messageOf(asked) == message.id ? asked : Asked()};
    if (row.isEmpty() && !isStreaming)
        return std::nullopt;
    return row;
}

} // namespace

QList<MessageRowModel> messageRows(const Conversation &conversation, const std::optional<QUuid> &streamingID,
                                   const Asked &asked) {
    QList<MessageRowModel> rows;
    rows.reserve(conversation.messages.size() + 1);
    if (conversation.droppedCount.value_or(0) >= 1)
        rows.append({QUuid(), MessageRowModel::Kind::note,
                     u"Earlier messages aren't being sent to the model to fit this Mac's memory."_s});
    // A damaged record may have several messages of one id, or one of none, which is the note's.
    QHash<QUuid, int> messagesOf{{QUuid(), 1}};
    messagesOf.reserve(conversation.messages.size() + 1);
    for (const Message &message : conversation.messages) {
        const int earlier = messagesOf[message.id]++;
        auto row = rowOf(message, streamingID, asked);
        if (!row)
            continue;
        if (earlier > 0)
            row->id = QUuid::createUuidV5(message.id, QByteArray::number(earlier));
        rows.append(*std::move(row));
    }
    return rows;
}

ChatScreenModel chatScreenModel(const ChatScreenState &state) {
    ChatScreenModel model;
    model.lamp = statusLamp(state.engine);
    if (state.needsMoveToApplications)
        model.moveHint = u"Ostrelin is running from a temporary location. Move it to the Applications "
                         "folder, then open it from there."_s;
    model.upgradeOffer = state.upgradeBanner.value_or(QString());
    if (state.availableUpdate) {
        model.updateNotice = updateNotice(*state.availableUpdate);
        model.updateURL = state.availableUpdate->downloadURL.value_or(QUrl());
    }
    model.memoryWarning = state.memoryWarning.value_or(QString());
    if (state.engine.state == EngineStatus::State::failed)
        model.engineFailure = state.engine.failure;
    model.isGenerating = state.isGenerating;
    // While the title is made, nothing can be asked again yet.
    model.showsSearchHint =
        state.showSearchHint && !state.isGenerating && state.searchMode == SearchMode::off;
    model.speed = state.responseSpeed;
    model.title = defaultTitle.toString();
    model.showsEmptyState = !state.conversation || state.conversation->messages.isEmpty();
    if (state.conversation) {
        model.conversationID = state.conversation->id;
        model.title = state.conversation->title;
    }
    if (!model.showsEmptyState)
        model.rows = messageRows(*state.conversation, writtenMessage(state), askedOf(state));
    else if (state.activeTier && state.activeTier->id.startsWith("lite"_L1))
        model.emptyHint = u"Great for writing, brainstorming and quick questions."_s;
    if (!model.rows.isEmpty() && !state.isGenerating)
        model.rows.last().canRegenerate = model.rows.last().kind == MessageRowModel::Kind::assistant;
    return model;
}

const QStringList &suggestions() {
    static const QStringList texts = {
        u"Write a friendly note thanking a coworker for helping me hit a deadline."_s,
        u"Explain how compound interest works, in plain words."_s,
        u"Brainstorm five names for a neighborhood coffee shop."_s,
        u"I have a job interview next week. Make me a short prep plan."_s,
    };
    return texts;
}
