#pragma once

#include "pages/drawing/SelectableText.h"

#include <vector>

/// Texts that stand one below another, as one text with a line feed between each two. Without any, it is
/// an empty text that takes no room.
class JoinedText : public SelectableText {
public:
    /// True if there are no texts.
    bool isEmpty() const { return m_parts.empty(); }

    int length() const override;
    QString textBetween(int start, int end) const override;
    int positionAt(const QPointF &point) const override;
    QRectF caretAt(int position) const override;
    int moved(int position, Move move) const override;
    TextSelection wordAt(int position) const override;
    TextSelection paragraphAt(int position) const override;

protected:
    /// One of the texts, which must outlive its place here, and where it stands.
    struct Part {
        const SelectableText *text = nullptr;
        QPointF origin;
        int start = 0; ///< its first place; what is given here is overwritten
    };

    /// From now on these are the texts, from top to bottom.
    void join(std::vector<Part> parts);

private:
    size_t indexOf(int position) const;
    int beyond(size_t index, int position, Move move) const;
    /// The place in the last or first line of a part, straight above or below `position`.
    int straightFrom(int position, const Part &part, int lineOf) const;

    std::vector<Part> m_parts;
};
