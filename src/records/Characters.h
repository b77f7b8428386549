#pragma once

#include <QString>
#include <QStringView>

/// Counting as a reader counts: a character is an extended grapheme cluster (Unicode UAX #29), so a
/// flag, or a letter with its accents, is one. Runs of ASCII are counted without the general algorithm.

/// The number of characters of `text`.
qsizetype characterCount(QStringView text);

/// The first `count` characters of `text`; all of it if it has no more. A negative count counts as 0.
QStringView firstCharacters(QStringView text, qsizetype count);
