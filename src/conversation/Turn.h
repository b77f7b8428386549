#pragma once

#include "conversation/ChatController.h"

/// What the person says at the start of a turn.
struct UserMessage {
    QString text;
    QList<Attachment> attachments;
};

/// What a turn is started with.
struct TurnRequest {
    std::optional<UserMessage> question; ///< to append; absent if the chat already ends with it
    Thinking think = Thinking::off;      ///< of the first request
    bool pageAccepted = false;           ///< the reply is to be a page
    std::optional<QString> nudge = {};   ///< what the first request tells the model beside its task
};

/// What one model request gives back to the turn.
struct RoundResult {
    enum class Kind { finished, failed, toolCalls };

    Kind kind = Kind::finished;
    QList<ToolCall> calls; ///< with toolCalls
};

#ifndef Q_MOC_RUN
/// One turn on a chat: it works on its own copy, saves that, and shows it through the controller. Ends
/// quietly when the controller goes away or forgets every chat. Main thread.
Task<> generate(ChatController *controller, Conversation conversation, TurnRequest request,
                std::stop_token stop);

/// How many times the model may have called tools when a request still offers some.
inline constexpr int lastRoundWithTools = 3;

/// The turn at work; generate() holds it for its whole length.
class Turn {
public:
    Turn(ChatController &controller, Conversation conversation, TurnRequest request, std::stop_token stop);

    /// Runs the turn to its end. Throws what a service of the turn throws.
    Task<> run();

    /// Saves the chat as it stands and ends the turn; for one that didn't get to its end.
    void abandon();

private:
    struct Round {
        Thinking think;
        std::optional<QString> nudge;
        bool isFirst;
    };

    void appendQuestion();
    Task<RoundResult> streamRound(Round round);
    Task<bool> runTools(QList<ToolCall> calls);
    Task<QString> runTool(ToolCall call);
    Task<> finish();
    Task<> makeTitle();
    void saveAndReset();

    /// A stopped turn comes to its end a moment later, when the next one may have begun. What both would
    /// touch, the flags of the controller and a chat that both work on, belongs to the later one.
    bool isLatest() const;
    bool isSuperseded() const;
    void save() const;
    void publish() const;
    void showStreaming(const std::optional<QUuid> &id) const;
    void reset() const;

    std::optional<StreamRequest> requestOf(const Round &round);
    LLMClient client() const;
    std::unique_ptr<ChunkStream> open(const StreamRequest &request, bool isFirst) const;
    void take(const StreamChunk &chunk);
    RoundResult finishMessage(const ToolCallAssembler &assembler);
    RoundResult failMessage();
    void writeSoon();
    Task<> writeLater(std::chrono::milliseconds delay, std::stop_token stop);
    void write();
    std::optional<QString> dueCorrection() const;
    bool isCancelled() const { return m_stop.stop_requested(); }

    /// True when there is nobody left to work for: the controller is gone, or has forgotten every chat.
    bool isForgotten() const { return !m_controller || m_controller->m_era != m_era; }
    bool allowsTools() const;

    const QPointer<ChatController> m_controller;
    const int m_era;
    int m_number = 0;
    Conversation m_conversation;
    const TurnRequest m_request;
    const std::stop_token m_stop;
    int m_round = 0;
    bool m_pageOfferAccepted;
    bool m_pageRetried = false;
    QSet<QString> m_foundURLs;

    Message m_message; ///< that is being written
    std::optional<std::chrono::milliseconds> m_lastWrite;
    TaskHandle m_nextWrite;
};
#endif
