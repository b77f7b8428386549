#include "screens/ShownTitle.h"

#include <algorithm>

QString shownTitle(const QString &title, QStringView otherwise) {
    const auto leavesATrace = [](QChar unit) {
        return unit.isLetterOrNumber() || unit.isPunct() || unit.isSymbol() || unit.isSurrogate();
    };
    const bool isToBeSeen = std::any_of(title.begin(), title.end(), leavesATrace);
    return isToBeSeen ? title.simplified() : otherwise.toString();
}
