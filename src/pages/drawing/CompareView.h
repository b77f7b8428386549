#pragma once

#include "pages/drawing/BlockView.h"
#include "pages/drawing/CompareColumn.h"

/// Two things beside each other. The first row has their titles.
class CompareView : public BlockView {
public:
    explicit CompareView(const DrawingTheme &theme) : BlockView(theme), m_left(theme), m_right(theme) {}

    SpokenPart spoken() const override;

private:
    double take(const BlockContent &content) override;
    double arrange(double width) override;
    void listTexts(TextParts &texts) const override;
    void drawFigure(QPainter &painter, const QRectF &clip) const override;
    SpokenPart spokenColumn(const CompareColumn &column) const;

    CompareColumn m_left;
    CompareColumn m_right;
    QColor m_base;
};
