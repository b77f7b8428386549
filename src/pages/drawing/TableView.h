#pragma once

#include "pages/drawing/BlockView.h"
#include "pages/drawing/ColumnWidths.h"

/// A table: its header in small capitals, its rows below, a line under each, as wide as its columns need to
/// be. Cells wrap where the columns
/// are too wide for the view, and columns that can't be made any narrower go on below the others, with
/// their part of the header: nothing is cut off and nothing has to be scrolled, on paper as on the screen.
class TableView : public BlockView {
public:
    using BlockView::BlockView;

    SpokenPart spoken() const override;

protected:
    double take(const BlockContent &content) override;
    double arrange(double width) override;
    void listTexts(TextParts &texts) const override;
    void drawFigure(QPainter &painter, const QRectF &clip) const override;

private:
    struct Cell {
        std::unique_ptr<TextPart> text; ///< none in an empty cell
        double wanted = 0;              ///< the width of the text on one line
        double measuredIn = -1;         ///< the width of the table for which that holds
    };
    using Row = std::vector<Cell>;

    /// Where a line lies, and how strong it is.
    struct Line {
        QRectF area;
        double opacity = 0;
    };

    double takeRow(size_t row, const Texts &texts);
    double takeCell(Cell &cell, size_t row, QStringView text);
    double topOf(size_t row) const;
    QList<double> wantedWidths(double width);
    void arrangeBand(const ColumnBand &band, double &top);
    double arrangeRow(Row &row, const ColumnBand &band, double top);

    std::vector<Row> m_rows;    ///< the header first
    std::vector<double> m_tops; ///< of the rows, in the first band
    QList<ColumnBand> m_bands;
    std::vector<Line> m_lines;
};
