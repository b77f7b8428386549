#pragma once

#include "pages/drawing/BlockView.h"
#include "pages/drawing/FigureArithmetic.h"
#include "pages/drawing/ValueLines.h"

/// A ring of slices, and beside it a legend with the share of each.
class DonutChartView : public BlockView {
public:
    explicit DonutChartView(const DrawingTheme &theme) : BlockView(theme), m_legend(theme) {}

    SpokenPart spoken() const override;

private:
    double take(const BlockContent &content) override;
    double arrange(double width) override;
    void listTexts(TextParts &texts) const override { m_legend.listTexts(texts); }
    void drawFigure(QPainter &painter, const QRectF &clip) const override;
    /// Gives its height.
    double placeLegend(double top, double width);
    void drawRing(QPainter &painter) const;
    void drawSwatches(QPainter &painter, const QRectF &clip) const;
    QRectF ring() const;

    QString m_color;
    QList<figure::Slice> m_slices;
    ValueLines m_legend;
};
