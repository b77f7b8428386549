#include "screens/ShownTitle.h"

#include "records/Conversation.h"

#include <algorithm>

QString shownTitle(const QString &title) {
    const auto leavesATrace = [](QChar unit) {
        return unit.isLetterOrNumber() || unit.isPunct() || unit.isSymbol() || unit.isSurrogate();
    };
    const bool isToBeSeen = std::any_of(title.begin(), title.end(), leavesATrace);
    return isToBeSeen ? title.simplified() : defaultTitle.toString();
}
