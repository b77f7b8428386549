#pragma once

#include "pages/drawing/BlockView.h"

/// Code in a box, below its language and a button that copies it.
class CodeBlock : public BlockView {
public:
    explicit CodeBlock(const DrawingTheme &theme);

    SpokenPart spoken() const override;

protected:
    double take(const BlockContent &content) override;
    double arrange(double width) override;
    void listTexts(TextParts &texts) const override;
    void drawFigure(QPainter &painter, const QRectF &clip) const override;
    QList<Target> buttons() const override;

private:
    QString m_written; ///< with the line ends that aren't shown
    TextPart m_language;
    TextPart m_copy;
    TextPart m_code;
    double m_barHeight = 0;
};
