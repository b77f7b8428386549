#pragma once

#include "pages/drawing/RowsView.h"
#include "pages/drawing/TextList.h"

/// Cards, two in a row: a bar, a title, and a text if there is one.
class CardsView : public RowsView {
public:
    explicit CardsView(const DrawingTheme &theme);

    SpokenPart spoken() const override { return spokenPairs(m_titles, m_texts); }

private:
    double take(const BlockContent &content) override;
    qsizetype rowsIn(double width) override;
    double placeRow(qsizetype row, double top, double width) override;
    double placeCard(qsizetype card, double top);
    void drawRow(QPainter &painter, qsizetype row, const QRectF &area) const override;
    void listTexts(TextParts &texts) const override;
    double leftOf(qsizetype card) const;

    TextList m_titles;
    TextList m_texts;
    QColor m_barColor;
    double m_cardWidth = 0;
};
