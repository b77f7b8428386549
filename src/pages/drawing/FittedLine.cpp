#include "pages/drawing/FittedLine.h"

#include "pages/drawing/GlyphContext.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double leastScale = 0.6;
/// What is longer is cut in any case, so the rest needn't be measured.
constexpr qsizetype mostLetters = 1000;

double widthOf(const QString &text, const QFont &font) {
    return QFontMetricsF(font).horizontalAdvance(text);
}

QFont fittingFont(const QString &text, QFont font, double width) {
    const int least = int(std::ceil(font.pixelSize() * leastScale));
    while (font.pixelSize() > least && widthOf(text, font) > width)
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

/// Nothing if there is no room for a letter: an ellipsis alone says nothing.
QString cut(const QString &text, const QFont &font, double width) {
    const QString shortened = QFontMetricsF(font).elidedText(text, Qt::ElideRight, width);
    return shortened == u"…"_s ? QString() : shortened;
}

} // namespace

FittedLine::FittedLine(const QString &text, const QFont &font, double width) {
    const QString beginning = text.left(mostLetters);
    const QFont fitting = fittingFont(beginning, font, width);
    const QString shown = cut(beginning, fitting, width);
    m_layout.setText(shown);
    m_layout.setFont(fitting);
    m_layout.setFormats(glyphsApart(shown));
    m_layout.setCacheEnabled(true);
    m_layout.beginLayout();
    m_layout.createLine();
    m_layout.endLayout();
}

void FittedLine::draw(QPainter &painter, const QPointF &middle) const {
    if (m_layout.lineCount() == 0)
        return;
    const QTextLine line = m_layout.lineAt(0);
    m_layout.draw(&painter, middle - QPointF(line.naturalTextWidth() / 2, line.ascent()));
}
