#pragma once

#include "pages/drawing/RowsView.h"
#include "pages/drawing/ValueLines.h"

/// Numbers as bars: each row has a line with label and number, and below it a field as wide as the view,
/// with a bar in it that starts at the left.
class BarRowsView : public RowsView {
public:
    SpokenPart spoken() const override;

protected:
    /// What a kind of them looks like, and how it is called.
    struct Kind {
        QString name;
        double spacing = 0;     ///< between two rows
        double fieldHeight = 0; ///< the track and the bar stand at its bottom
        double trackHeight = 0;
        double barHeight = 0;
    };

    struct Bars {
        Texts labels;
        QStringList numbers;
        QList<double> shares; ///< how much of the field each takes
        QString color;
    };

    BarRowsView(const DrawingTheme &theme, const Kind &kind);

    virtual Bars barsOf(const BlockContent &content) const = 0;

private:
    double take(const BlockContent &content) override;
    qsizetype rowsIn(double) override { return m_lines.size(); }
    double placeRow(qsizetype row, double top, double width) override;
    void drawRow(QPainter &painter, qsizetype row, const QRectF &area) const override;
    void listTexts(TextParts &texts) const override { m_lines.listTexts(texts); }

    const Kind m_kind;
    ValueLines m_lines;
    QList<double> m_shares;
    QColor m_tint;
};
