#pragma once

#include <QString>

/// Whether `part` is what a reader makes of the beginning of a document whose text is `whole`. Only at its
/// end may it differ: half a pair is no character, and a row that has no end yet keeps its last tabulator.
inline bool isTextOfBeginning(QStringView part, QStringView whole) {
    while (!part.isEmpty() && (part.back().isSpace() || part.back() == QChar::ReplacementCharacter))
        part.chop(1);
    return whole.startsWith(part);
}
