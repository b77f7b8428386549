#pragma once

#include <QDateTime>
#include <QString>

/// Dates of pages as a person reads them, in the time of the place where the program runs.

/// "Nov 15, 2026".
QString shownDate(const QDateTime &date);

/// "Nov 15, 2026 at 1:18 PM".
QString shownDateAndTime(const QDateTime &date);
