#include "pages/drawing/LongParagraph.h"

#include "records/CodePoint.h"

#include <QTextLayout>

namespace {

/// The lines before the end of a layout that more text may still change: the last one, and the one
/// before it, whose last word may turn out to belong to a longer one.
constexpr int unsettledLines = 2;

bool turns(char32_t character) {
    switch (QChar::direction(character)) {
    case QChar::DirL:
    case QChar::DirEN:
    case QChar::DirES:
    case QChar::DirET:
    case QChar::DirCS:
    case QChar::DirB:
    case QChar::DirS:
    case QChar::DirWS:
    case QChar::DirON:
    case QChar::DirBN:
    case QChar::DirNSM:
        return false;
    default:
        return true;
    }
}

/// True for the characters of scripts that are written without spaces and don't touch each other.
bool standsAlone(QChar character) {
    const QChar::Script script = character.script();
    return script == QChar::Script_Han || script == QChar::Script_Hiragana ||
           script == QChar::Script_Katakana;
}

/// True if the shapes on one side don't depend on those on the other. What comes next has to be a
/// letter: its direction and script are its own, which those of a sign aren't.
bool areApart(QChar before, QChar next) {
    if (!next.isLetter() || next.direction() != QChar::DirL)
        return false;
    return before == u' ' || (standsAlone(before) && standsAlone(next));
}

} // namespace

bool longParagraph::runsFromTheLeft(QStringView text) {
    for (qsizetype place = 0; place < text.size();) {
        const CodePoint point = codePointAt(text, place);
        if (turns(point.value))
            return false;
        place += point.length;
    }
    return true;
}

int longParagraph::separableLines(const QTextLayout &layout) {
    const QString text = layout.text();
    for (int line = layout.lineCount() - unsettledLines; line > 0; --line) {
        const int start = layout.lineAt(line).textStart();
        if (areApart(text.at(start - 1), text.at(start)) && layout.isValidCursorPosition(start))
            return line;
    }
    return 0;
}

int longParagraph::cuttableLines(const QTextLayout &layout) {
    for (int line = layout.lineCount() - unsettledLines; line > 0; --line) {
        if (layout.isValidCursorPosition(layout.lineAt(line).textStart()))
            return line;
    }
    return 0;
}
