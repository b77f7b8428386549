#pragma once

#include "pages/drawing/RowsView.h"
#include "pages/drawing/TextList.h"

/// Steps in boxes, from each an arrow down to the next.
class FlowDiagramView : public RowsView {
public:
    explicit FlowDiagramView(const DrawingTheme &theme);

    SpokenPart spoken() const override { return spokenList(m_steps); }

private:
    double take(const BlockContent &content) override;
    qsizetype rowsIn(double) override { return m_steps.size(); }
    double placeRow(qsizetype row, double top, double width) override;
    void drawRow(QPainter &painter, qsizetype row, const QRectF &area) const override;
    void drawArrow(QPainter &painter, double top) const;
    void listTexts(TextParts &texts) const override { m_steps.listTexts(texts); }

    TextList m_steps;
    QColor m_tint;
};
