#pragma once

#include "pages/drawing/BlockView.h"
#include "pages/drawing/TextList.h"

#include <vector>

/// A figure of rows, one below another. Only the rows that meet the clip are drawn.
class RowsView : public BlockView {
protected:
    /// `spacing` comes between two rows.
    RowsView(const DrawingTheme &theme, double spacing) : BlockView(theme), m_spacing(spacing) {}

    /// How many rows there are in that width.
    virtual qsizetype rowsIn(double width) = 0;
    /// Lays and places what is in a row, and gives its height, a whole number.
    virtual double placeRow(qsizetype row, double top, double width) = 0;
    /// Draws all but the texts of a row, which takes that area.
    virtual void drawRow(QPainter &, qsizetype, const QRectF &) const {}

    qsizetype rowCount() const { return qsizetype(m_tops.size()) - 1; }
    /// Where a row stands as it was arranged last; the height if there is none.
    double topOf(qsizetype row) const;
    /// Where the drawing changes if there will be `count` rows, `changed` is the first that differs, and the
    /// last one doesn't look like the others.
    double topOfChange(qsizetype changed, qsizetype count) const;

    /// What a screen reader finds: one item for each text, or for each two that belong together.
    SpokenPart spokenList(const TextList &items) const;
    SpokenPart spokenPairs(const TextList &ones, const TextList &others) const;

private:
    double arrange(double width) final;
    void drawFigure(QPainter &painter, const QRectF &clip) const final;

    const double m_spacing;
    std::vector<double> m_tops{0}; ///< the last one is that of a row that isn't there
};
