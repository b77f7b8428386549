#pragma once

#include "core/UpdateInfo.h"
#include "engine/EngineStatus.h"
#include "records/Conversation.h"
#include "records/ModelTier.h"
#include "records/Settings.h"
#include "screens/MessageRowModel.h"
#include "screens/StatusLamp.h"

#include <QList>
#include <QStringList>

#include <optional>

/// The published state from which the chat screen follows.
struct ChatScreenState {
    std::optional<Conversation> conversation;
    std::optional<QUuid> streamingID;
    bool isGenerating = false;
    std::optional<PendingSearch> pendingPermission;
    std::optional<PendingPageOffer> pendingPageOffer;
    std::optional<PendingMemory> pendingMemory;
    std::optional<QUuid> generatingID;
    bool showSearchHint = false;
    SearchMode searchMode = SearchMode::off;
    EngineStatus engine;
    std::optional<ModelTier> activeTier;
    bool needsMoveToApplications = false;
    std::optional<QString> upgradeBanner;
    std::optional<UpdateInfo> availableUpdate;
    std::optional<QString> memoryWarning;
    ResponseSpeed responseSpeed = ResponseSpeed::full;
};

/// What the chat screen shows. A plain value.
struct ChatScreenModel {
    QUuid conversationID; ///< null while no chat is open
    QString title;
    StatusLamp lamp;
    QString moveHint; ///< the banners' texts; empty for no banner
    QString upgradeOffer;
    QString updateNotice;
    QUrl updateURL; ///< where the update can be had; empty if that isn't known
    QString memoryWarning;
    QString engineFailure;
    QList<MessageRowModel> rows; ///< empty in the empty state
    bool showsEmptyState = false;
    QString emptyHint; ///< under the heading of the empty state; empty for none
    bool isGenerating = false;
    bool showsSearchHint = false;
    ResponseSpeed speed = ResponseSpeed::full;

    bool operator==(const ChatScreenModel &) const = default;
};

ChatScreenModel chatScreenModel(const ChatScreenState &state);

/// The rows of a chat. Messages that are for the model alone, and replies with nothing to show, have none.
/// No two rows have one id, and a row keeps its own for as long as the messages before it stay.
/// What is asked hangs on the reply that asks it.
QList<MessageRowModel> messageRows(const Conversation &conversation, const std::optional<QUuid> &streamingID,
                                   const Asked &asked = {});

/// The four suggestions of the empty state.
const QStringList &suggestions();
