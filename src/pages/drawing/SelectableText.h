#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>

#include <algorithm>

/// A stretch of a text between the place where a person began to select and the caret. Places count
/// UTF-16 code units.
struct TextSelection {
    int anchor = 0;
    int caret = 0;

    bool isEmpty() const { return anchor == caret; }
    int start() const { return std::min(anchor, caret); }
    int end() const { return std::max(anchor, caret); }

    bool operator==(const TextSelection &) const = default;
};

/// A text that is laid somewhere, in one piece or in many, through which a caret can move. Points are in
/// device-independent pixels from its top left corner, and every place is from 0 to length().
class SelectableText {
public:
    enum class Move {
        previousCharacter,
        nextCharacter,
        previousWord,
        nextWord,
        lineStart,
        lineEnd,
        lineUp,
        lineDown,
        textStart,
        textEnd
    };

    virtual ~SelectableText() = default;

    virtual int length() const = 0;
    virtual QString textBetween(int start, int end) const = 0;
    /// The place nearest to a point.
    virtual int positionAt(const QPointF &point) const = 0;
    /// Where a caret before `position` stands.
    virtual QRectF caretAt(int position) const = 0;
    /// The place that a caret comes to; the same one if there is nowhere to go.
    virtual int moved(int position, Move move) const = 0;
    /// The word, or the paragraph, around a place.
    virtual TextSelection wordAt(int position) const = 0;
    virtual TextSelection paragraphAt(int position) const = 0;
};
