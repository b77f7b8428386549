#pragma once

#include "pages/drawing/TextList.h"

class QPainter;

/// One side of a comparison: a bar, a title, and items behind dashes.
class CompareColumn {
public:
    /// `theme` must outlive this object.
    explicit CompareColumn(const DrawingTheme &theme);

    /// From now on it says that. Gives the distance from its top at which the drawing changes; its height if
    /// nothing does.
    double setTexts(QStringView title, const Texts &items);
    void setBase(const QColor &base) { m_base = base; }

    /// Places everything, the top left at `origin`, and gives the height, a whole number.
    double place(const QPointF &origin, double width);
    /// Draws all but the texts. Of the items only those that meet `clip` are looked after.
    void draw(QPainter &painter, const QRectF &clip) const;

    void listTexts(std::vector<const TextPart *> &texts) const;
    const QRectF &area() const { return m_area; }
    const TextPart &title() const { return m_title; }
    const TextList &items() const { return m_items; }

private:
    const DrawingTheme &m_theme;
    const QFont m_font;
    TextPart m_title;
    TextList m_items;
    QColor m_base;
    QRectF m_area;
};
