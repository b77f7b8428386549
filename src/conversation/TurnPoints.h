#pragma once

#include "client/LLMClient.h"
#include "client/TextRepair.h"
#include "client/WrittenToolCalls.h"
#include "conversation/ChatHost.h"
#include "pages/PageDocument.h"
#include "records/Conversation.h"

#include <QPointer>
#include <QSet>

#include <functional>
#include <memory>

class Consent;

/// Where a turn calls on the rest of the conversation engine. The loop knows no more of these services
/// than is told here. Every member may be left empty; beside it stands how the turn then behaves. None
/// should throw: an error saves the chat and ends the turn. Main thread only.
struct TurnPoints {
    /// What a tool may see and change of the turn that called it. Holds until the tool has returned, but for
    /// the host and the cards, which are gone if the turn was stopped meanwhile.
    struct ToolContext {
        Conversation &conversation;    ///< the turn's own copy, which the turn saves
        bool &pageOfferAccepted;       ///< this turn's reply is to be a page
        QSet<QString> &foundURLs;      ///< by the searches of this chat: the pages that may be read
        std::function<void()> publish; ///< shows the conversation as it is now
        QPointer<ChatHost> host;
        Consent &consent;
    };

    /// Thinking, and tool calls, that the model wrote into its text. Empty: the text stays as it came.
    std::function<ExtractedThinking(const QString &content)> extractThinking;
    std::function<ExtractedToolCalls(const QString &content)> extractToolCalls;

    /// A reply that comes in bursts. Empty: every request is streamed at full speed.
    std::function<std::unique_ptr<ChunkStream>(LLMClient, StreamRequest, ResponseSpeed)> pacedStream;

    /// The tools of a request. Empty: none are offered.
    std::function<QJsonArray(bool allowTools, const Settings &settings,
                             const std::optional<ModelTier> &activeTier)>
        toolList;

#ifndef Q_MOC_RUN
    /// Runs a call, which may wait for the person, and gives the text for the model. Once `stop` is
    /// requested it returns soon, with the refusal. Empty: every call gets "Unknown tool.".
    std::function<Task<QString>(ToolCall call, ToolContext context, std::stop_token stop)> runTool;

    /// What a chat is to be called after a turn; nothing if its title stays, and soon so once `stop` is
    /// requested. Empty: every title stays.
    std::function<Task<std::optional<QString>>(LLMClient client, Sampling sampling, Conversation conversation,
                                               std::stop_token stop)>
        makeTitle;
#endif

    /// What to tell the model if the page that was agreed on can't be made of this reply; nothing if
    /// it can. Empty: no reply is ever asked for again.
    std::function<std::optional<QString>(const QString &content)> pageCorrection;

    /// Turns the last reply into text and page, an accepted one or one that came unasked, and gives the draft
    /// of an accepted one. Empty: the reply stays as it is.
    std::function<std::optional<PageDocument>(Conversation &conversation, bool pageOfferAccepted,
                                              const QDateTime &now)>
        finishPage;

    /// Whether to hint at web search after a turn. Empty: no hint.
    std::function<bool(const Settings &settings, const Conversation &conversation)> suggestsSearch;
};
