#pragma once

#include "records/Conversation.h"
#include "records/ModelTier.h"
#include "records/Settings.h"
#include "screens/SessionRange.h"

/// The published state from which the sidebar follows.
struct SidebarState {
    QList<ConversationSummary> summaries; ///< of all chats, in their order
    QUuid openID;                         ///< the chat on screen; null for none
    QUuid answeringID;                    ///< the chat whose reply is being written; null for none
    SessionRange range = SessionRange::all;
    QDateTime now; ///< in the person's time zone
    SearchMode searchMode = SearchMode::off;
    std::optional<ModelTier> activeTier;
};

/// What the sidebar shows. A plain value.
struct SidebarModel {
    QList<ConversationSummary> chats;
    QUuid openID;      ///< as in the state
    QUuid answeringID; ///< as in the state
    QString emptyText; ///< in place of the list; empty where there are chats
    bool offersSearch = false;
    bool isOffline = false;

    bool operator==(const SidebarModel &) const = default;
};

SidebarModel sidebarModel(const SidebarState &state);

/// What the switch makes of the web search. Off leads to the most open setting, whatever was before.
SearchMode searchModeOf(bool isOffline);
