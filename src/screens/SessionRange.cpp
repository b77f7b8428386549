#include "screens/SessionRange.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace {

/// How many days before the current one the range begins.
std::optional<int> daysBack(SessionRange range) {
    switch (range) {
    case SessionRange::today:
        return 0;
    case SessionRange::week:
        return 6;
    case SessionRange::month:
        return 29;
    case SessionRange::all:
        return std::nullopt;
    }
    Q_UNREACHABLE();
}

} // namespace

QString labelOf(SessionRange range) {
    switch (range) {
    case SessionRange::today:
        return u"Today"_s;
    case SessionRange::week:
        return u"Last 7 days"_s;
    case SessionRange::month:
        return u"Last 30 days"_s;
    case SessionRange::all:
        return u"All time"_s;
    }
    Q_UNREACHABLE();
}

QString emptyTextOf(SessionRange range) {
    switch (range) {
    case SessionRange::today:
        return u"No chats today."_s;
    case SessionRange::week:
        return u"No chats in the last 7 days."_s;
    case SessionRange::month:
        return u"No chats in the last 30 days."_s;
    case SessionRange::all:
        return u"No chats yet."_s;
    }
    Q_UNREACHABLE();
}

std::optional<QDateTime> lowerBound(SessionRange range, const QDateTime &now) {
    const std::optional<int> days = daysBack(range);
    if (!days)
        return std::nullopt;
    const QDateTime start = now.date().addDays(-*days).startOfDay(now.timeZone());
    return start.isValid() ? std::optional(start) : std::nullopt;
}
