#pragma once

#include "pages/drawing/RowsView.h"
#include "pages/drawing/TextList.h"

/// The items of a list, each behind its marker: a bullet, or its place from 1 on, as "1." or "[1]". An item
/// that is written from the right has its marker there.
class ListView : public RowsView {
public:
    enum class Marker { bullet, number, source };

    ListView(const DrawingTheme &theme, Marker marker);

    SpokenPart spoken() const override;

protected:
    double take(const BlockContent &content) override;
    qsizetype rowsIn(double) override { return m_items.size(); }
    double placeRow(qsizetype row, double top, double width) override;
    void drawRow(QPainter &painter, qsizetype row, const QRectF &area) const override;
    void listTexts(TextParts &texts) const override { m_items.listTexts(texts); }

private:
    QString markerOf(qsizetype item) const;
    double widestMarker() const;

    const Marker m_marker;
    const QFont m_font;
    TextList m_items;
    double m_markerWidth = 0;
};
