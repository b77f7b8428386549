#pragma once

#include <QDateTime>
#include <QString>

#include <array>
#include <optional>

/// From when on the sidebar lists chats, in the order of its menu.
enum class SessionRange { today, week, month, all };

inline constexpr std::array sessionRanges = {SessionRange::today, SessionRange::week, SessionRange::month,
                                             SessionRange::all};

/// The range's name in the menu, and what the list says when it has no chat of that range.
QString labelOf(SessionRange range);
QString emptyTextOf(SessionRange range);

/// The first moment of the range: the start of a day of the calendar, in the time zone of `now`, whatever
/// the clocks did meanwhile. Nothing for all time, and where the calendar knows no such moment.
std::optional<QDateTime> lowerBound(SessionRange range, const QDateTime &now);
