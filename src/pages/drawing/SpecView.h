#pragma once

#include "pages/drawing/RowsView.h"
#include "pages/drawing/TextList.h"

/// Keys and their values, with a hairline between each two.
class SpecView : public RowsView {
public:
    explicit SpecView(const DrawingTheme &theme);

    SpokenPart spoken() const override { return spokenPairs(m_keys, m_values); }

private:
    double take(const BlockContent &content) override;
    qsizetype rowsIn(double) override { return m_keys.size(); }
    double placeRow(qsizetype row, double top, double width) override;
    void drawRow(QPainter &painter, qsizetype row, const QRectF &area) const override;
    void listTexts(TextParts &texts) const override;

    TextList m_keys;
    TextList m_values;
};
