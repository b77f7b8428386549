#pragma once

#include "pages/drawing/BlockView.h"
#include "pages/drawing/FittedLine.h"

#include <deque>

/// A line through points that stand evenly apart, each with its label below. The plot starts at zero: what
/// is negative stands below it, as far as the figure reaches.
class LineChartView : public BlockView {
public:
    explicit LineChartView(const DrawingTheme &theme);

    SpokenPart spoken() const override;

private:
    double take(const BlockContent &content) override;
    double arrange(double width) override;
    void drawFigure(QPainter &painter, const QRectF &clip) const override;
    void layPoints(double width);
    void layLabels(double width);
    void drawLine(QPainter &painter) const;
    void drawLabels(QPainter &painter) const;

    const QFont m_font;
    QStringList m_labels;
    QList<double> m_values;
    QColor m_tint;
    QList<QPointF> m_points;
    std::deque<FittedLine> m_labelLines; ///< none if there is no room for them
    double m_columnWidth = 0;
};
