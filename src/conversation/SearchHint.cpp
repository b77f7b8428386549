#include "conversation/SearchHint.h"

#include "conversation/MessagePlaces.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

bool suggestsSearch(const Settings &settings, const Conversation &conversation) {
    constexpr std::array words{"search"_L1, "internet"_L1, "recent"_L1};
    const qsizetype place = lastAssistant(conversation.messages);
    if (settings.searchMode != SearchMode::off || place < 0)
        return false;
    const QString reply = conversation.messages.at(place).content.toLower();
    return std::ranges::any_of(words, [&](QLatin1StringView word) { return reply.contains(word); });
}
