#pragma once

#include "conversation/ChatHost.h"
#include "conversation/Consent.h"
#include "conversation/TurnPoints.h"
#include "platform/TaskHandle.h"
#include "records/ChatStore.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>

#include <memory>
#include <optional>

class Clock;
class MemoryPressure;
struct TurnRequest;

/// The conversation engine: the one object that the chat screen talks to. It runs one turn at a time,
/// from the sending of a message to the saved reply, with as many model requests in between as the
/// tools need. A chat that isn't on screen goes on unseen. Main thread only.
class ChatController : public QObject {
    Q_OBJECT

public:
    /// `clock` must outlive this object; `host` need not.
    ChatController(ChatHost *host, Clock &clock, TurnPoints points = {}, QObject *parent = nullptr);
    ~ChatController() override;

    /// The chat on screen.
    const std::optional<Conversation> &conversation() const { return m_conversation; }

    /// The rows of all chats, newest first.
    const QList<ConversationSummary> &summaries() const { return m_summaries; }

    /// True while a turn runs, whichever chat it belongs to.
    bool isGenerating() const { return m_isGenerating; }

    /// The assistant message that is being written now.
    const std::optional<QUuid> &streamingID() const { return m_streamingID; }

    /// The chat of the running turn, which need not be the one on screen.
    const std::optional<QUuid> &generatingID() const { return m_generatingID; }

    /// The offer of a better model; nothing while there is none. Whoever knows the models sets it.
    const std::optional<QString> &upgradeBanner() const { return m_upgradeBanner; }
    void setUpgradeBanner(const std::optional<QString> &text);

    /// What to tell the person when the machine ran short of memory; nothing if it never did.
    const std::optional<QString> &memoryWarning() const { return m_memoryWarning; }

    /// The cards of the running turn, and their answers.
    Consent &consent() { return m_consent; }

    /// True when the last reply suggests that the web could have told more.
    bool showSearchHint() const { return m_showSearchHint; }
    void dismissSearchHint() { setShowSearchHint(false); }

    /// A page that isn't saved yet; nothing while none is open.
    const std::optional<PageDocument> &pageDraft() const { return m_pageDraft; }

    /// Sends the person's message and starts the turn. Does nothing if there is neither text nor an
    /// attachment, or while a turn runs. Makes a new chat if none is on screen.
    void send(const QString &text, Thinking think = Thinking::off, const QList<Attachment> &attachments = {});

    /// Asks the last question again, as a new message and without thinking; what came after it is gone for
    /// good. Does nothing if there is no question, or while a turn runs.
    void regenerate();

    /// Asks for the page of the last reply again. If the page could not be made, that reply goes. Does
    /// nothing without a chat, or while a turn runs.
    void retryPage();

    /// Ends the running turn; the reply stays as far as it had come, and what it asks is refused.
    void stop();

    /// Puts a new, empty chat on screen and on disk. A running turn goes on in its own chat.
    void newChat();

    /// Puts a chat from disk on screen. Nothing happens if its file can't be read. A running turn goes on in
    /// its own chat.
    void openConversation(const QUuid &id);

    /// Gives a chat another title, which is taken as it is. Nothing happens if its file can't be read.
    void renameConversation(const QUuid &id, const QString &title);

    /// Deletes a chat, and ends its turn if it has one. A new chat takes its place on screen.
    void deleteConversation(const QUuid &id);

    /// Opens a page of a message as a new draft, in place of the present one.
    void openPage(const PageSnapshot &page);

    /// Closes the draft, which is saved as a page of its own before, or lost. Nothing happens without one.
    void savePageDraft();
    void closePageDraft();

    /// From now on a machine that runs short of memory ends the running turn and sets the warning.
    void startMemoryWatch();

    /// Runs a scheduled prompt as a turn of its own in a new chat titled `name`, or "Scheduled run" if
    /// that is empty. Does nothing while a turn runs.
    void runSchedule(const QString &name, const QString &prompt);

    /// Reads the rows of all chats anew.
    void reloadSummaries();

    /// Ends the running turn, which saves nothing any more, and forgets every chat. For when the chats on
    /// disk have been deleted.
    void resetAll();

Q_SIGNALS:
    void conversationChanged();
    void summariesChanged();
    void isGeneratingChanged();
    void streamingIDChanged();
    void upgradeBannerChanged();
    void memoryWarningChanged();
    void showSearchHintChanged();
    void pageDraftChanged();

private:
    friend class Turn;

    /// The present moment in whole seconds, which is what a chat's file keeps.
    QDateTime now() const;

    void startTurn(const Conversation &conversation, const TurnRequest &request);

    /// Takes the state of a turn's chat, and shows it if that chat is on screen.
    void publish(Conversation conversation);
    void show(const Conversation &conversation);
    /// What belonged to the chat that was on screen goes with it.
    void leavePreviousChat();
    /// Writes a chat, unless it was deleted.
    void save(Conversation conversation);
    /// The title that a chat has, or was given since.
    QString titleOf(const Conversation &chat) const;
    /// Takes a title that the model made, unless the chat has one of its own by now.
    void takeMadeTitle(const QUuid &id, const QString &title);
    void testSearchHint(const Conversation &conversation);
    void setShowSearchHint(bool shows);
    void setPageDraft(const std::optional<PageDocument> &draft);
    /// The machine has run short of memory.
    void takeMemoryPressure();
    void setMemoryWarning(const std::optional<QString> &text);
    void resetTurn();
    void setIsGenerating(bool isGenerating);
    void setStreamingID(const std::optional<QUuid> &id);

    QPointer<ChatHost> m_host;
    Clock &m_clock;
    const TurnPoints m_points;
    ChatStore m_store;
    std::optional<Conversation> m_conversation;
    QList<ConversationSummary> m_summaries;
    bool m_isGenerating = false;
    std::optional<QUuid> m_streamingID;
    std::optional<QUuid> m_generatingID;
    std::optional<Conversation> m_generatingChat; ///< as the running turn has it
    std::optional<QString> m_upgradeBanner;
    std::optional<QString> m_memoryWarning;
    Consent m_consent;
    bool m_showSearchHint = false;
    std::optional<PageDocument> m_pageDraft;
    QHash<QUuid, QSet<QString>> m_foundURLs; ///< by the searches of each chat
    /// A turn has a copy of its chat. What happens to the chat meanwhile goes before what that says.
    QHash<QUuid, QString> m_givenTitles;
    QSet<QUuid> m_deleted;
    std::unique_ptr<MemoryPressure> m_memorySource;
    int m_turns = 0; ///< how many have begun
    int m_era = 0;   ///< a turn of an era before this one has nothing to say any more
    TaskHandle m_generateTask;
};
