#pragma once

#include "pages/drawing/RowsView.h"
#include "pages/drawing/TextList.h"

/// Items along a rail, each beside its dot. The rail stands where the first item begins to be read.
class TimelineListView : public RowsView {
public:
    explicit TimelineListView(const DrawingTheme &theme);

    SpokenPart spoken() const override { return spokenList(m_items); }

private:
    double take(const BlockContent &content) override;
    qsizetype rowsIn(double) override { return m_items.size(); }
    double placeRow(qsizetype row, double top, double width) override;
    void drawRow(QPainter &painter, qsizetype row, const QRectF &area) const override;
    void listTexts(TextParts &texts) const override { m_items.listTexts(texts); }
    bool isMirrored() const;

    TextList m_items;
    QColor m_tint;
};
