#include "screens/SidebarModel.h"

#include <algorithm>

namespace {

QList<ConversationSummary> chatsSince(const std::optional<QDateTime> &bound,
                                      const QList<ConversationSummary> &all) {
    if (!bound)
        return all;
    QList<ConversationSummary> chats;
    // Compared in one time zone, a date costs no look into the calendar.
    std::copy_if(
        all.begin(), all.end(), std::back_inserter(chats),
        [start = bound->toUTC()](const ConversationSummary &chat) { return chat.updatedAt >= start; });
    return chats;
}

} // namespace

SidebarModel sidebarModel(const SidebarState &state) {
    SidebarModel model;
    model.chats = chatsSince(lowerBound(state.range, state.now), state.summaries);
    model.openID = state.openID;
    model.answeringID = state.answeringID;
    if (model.chats.isEmpty())
        model.emptyText = emptyTextOf(state.range);
    model.offersSearch = !state.activeTier || state.activeTier->supportsTools;
    model.isOffline = state.searchMode == SearchMode::off;
    return model;
}

SearchMode searchModeOf(bool isOffline) {
    return isOffline ? SearchMode::off : SearchMode::always;
}
