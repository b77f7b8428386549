#pragma once

#include "pages/drawing/SelectableText.h"

/// A text as it stands when what it is drawn in is shown larger or smaller.
class ScaledText : public SelectableText {
public:
    /// `text` must outlive this object.
    explicit ScaledText(const SelectableText &text) : m_text(text) {}

    void setScale(double scale) { m_scale = scale; }
    double scale() const { return m_scale; }

    int length() const override { return m_text.length(); }
    QString textBetween(int start, int end) const override { return m_text.textBetween(start, end); }
    int positionAt(const QPointF &point) const override { return m_text.positionAt(point / m_scale); }
    QRectF caretAt(int position) const override {
        const QRectF caret = m_text.caretAt(position);
        return {caret.topLeft() * m_scale, caret.size() * m_scale};
    }
    int moved(int position, Move move) const override { return m_text.moved(position, move); }
    TextSelection wordAt(int position) const override { return m_text.wordAt(position); }
    TextSelection paragraphAt(int position) const override { return m_text.paragraphAt(position); }

private:
    const SelectableText &m_text;
    double m_scale = 1;
};
