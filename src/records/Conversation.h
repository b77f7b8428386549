#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <array>
#include <optional>

/// The value records of a chat. They are plain values: copied whole, equal when all fields are equal.
/// Their JSON form is in ConversationCoding.h, and the names of cases come by CaseNames.h.

/// Who speaks in a message.
enum class Role { system, user, assistant, tool };

constexpr std::array<QStringView, 4> caseNames(Role) {
    return {u"system", u"user", u"assistant", u"tool"};
}

/// How far a web search that a message carries has come.
enum class SearchStatus { asked, allowed, denied };

constexpr std::array<QStringView, 3> caseNames(SearchStatus) {
    return {u"asked", u"allowed", u"denied"};
}

/// One call that the model made. `arguments` is the raw JSON text as the model produced it.
struct ToolCall {
    QString id;
    QString name;
    QString arguments;

    bool operator==(const ToolCall &) const = default;
};

/// One result that a web search produced. `url` is text, never parsed here.
struct SearchSource {
    qint64 id = 0;
    QString title;
    QString url;
    QString snippet;

    bool operator==(const SearchSource &) const = default;
};

/// The search card that a message carries.
struct SearchEvent {
    QString query;
    SearchStatus status = SearchStatus::asked;
    QList<SearchSource> sources;

    bool operator==(const SearchEvent &) const = default;
};

/// A file that was imported as text. The text lives here; no file is referred to.
struct Attachment {
    QUuid id;
    QString name;
    QString text;

    bool operator==(const Attachment &) const = default;
};

/// A page as it stood when a message produced it.
struct PageSnapshot {
    QString title;
    QString markdown;

    bool operator==(const PageSnapshot &) const = default;
};

/// One turn of a chat.
struct Message {
    QUuid id;
    Role role = Role::user;
    QString content;                          ///< the visible text
    std::optional<QString> reasoning;         ///< what the model streamed apart from the answer
    std::optional<QList<ToolCall>> toolCalls; ///< absent and empty are different things on disk
    std::optional<QString> toolCallId;        ///< on a tool message: the call that it answers
    std::optional<SearchEvent> searchEvent;
    std::optional<QList<Attachment>> attachments;
    std::optional<PageSnapshot> page;
    std::optional<bool> pageFailed; ///< a page was expected, and none could be made

    bool operator==(const Message &) const = default;
};

/// The title of a chat until it has earned one.
inline constexpr QStringView defaultTitle = u"New chat";

/// One chat; the whole of one conversation file. Messages stand oldest first.
struct Conversation {
    QUuid id;
    QString title;
    QDateTime createdAt;
    QDateTime updatedAt;
    QList<Message> messages;
    std::optional<qint64> droppedCount; ///< oldest messages that the last prompt left out

    bool operator==(const Conversation &) const = default;
};

/// One row of the chat index, and of the sidebar.
struct ConversationSummary {
    QUuid id;
    QString title;
    QDateTime updatedAt;
    qint64 characterCount = 0; ///< a rough token figure: see summaryOf()

    bool operator==(const ConversationSummary &) const = default;
};

/// The sampling parameters of a model request.
struct Sampling {
    double temperature = 0;
    double topP = 0;
    qint64 topK = 0;
    double minP = 0;
    double presencePenalty = 0;

    bool operator==(const Sampling &) const = default;
};

/// A chat without messages, titled "New chat" unless told otherwise, with a new id and both dates `now`.
Conversation newConversation(const QDateTime &now, const QString &title = defaultTitle.toString());

/// The index row of a chat. `characterCount` is the number of user-perceived characters of the
/// `content` of all its messages, divided by 4 and truncated.
ConversationSummary summaryOf(const Conversation &conversation);
