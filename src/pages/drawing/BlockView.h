#pragma once

#include "pages/MarkdownBlock.h"
#include "pages/drawing/DrawingTheme.h"
#include "pages/drawing/JoinedText.h"
#include "pages/drawing/SpokenPart.h"
#include "pages/drawing/TextPart.h"

#include <optional>

class QPainter;

namespace figure {

/// Thin lines, and how strong they are in the primary colour.
inline constexpr int hairline = 1;
inline constexpr double hairlineOpacity = 0.12;

/// How far a figure may be drawn beyond its area, on each side: the dots of a plot stand around its edge.
inline constexpr int reach = 3;

} // namespace figure

/// The drawing of one block: on the screen, on paper, anywhere a QPainter paints. It is no widget and knows
/// none. Whoever owns it gives it a width, then a block, and places it; its coordinates start at its own
/// top left corner, in device-independent pixels. As a text, it is what can be selected in it.
///
/// A kind of block is a class of its own that says what it consists of: it keeps the texts as TextPart,
/// which are drawn here, and draws only what isn't text. Main thread; needs a QGuiApplication.
class BlockView : public JoinedText {
public:
    /// `theme` must outlive this object. With another theme, make another view.
    explicit BlockView(const DrawingTheme &theme) : m_theme(theme) {}
    BlockView(const BlockView &) = delete;
    BlockView &operator=(const BlockView &) = delete;

    /// Shows another block of the kind that the view is for, of which nothing is kept but copies. Gives the
    /// distance from the top at which the drawing changes; nothing above it does.
    double setBlock(const BlockContent &content);

    /// Gives the height in that width. Costs nothing if the width is the one that it has.
    double layIn(double width);
    double width() const { return m_width; }
    /// A whole number.
    double height() const { return m_height; }

    /// Draws what meets `clip`. The painter's pen, brush and hints are left as they come.
    void draw(QPainter &painter, const QRectF &clip, const TextSelection &selection = {}) const;

    /// What can be pressed, in the order of reading.
    QList<Target> targets() const;
    std::optional<Target> targetAt(const QPointF &point) const;

    /// What a screen reader finds, its areas in the view's coordinates.
    virtual SpokenPart spoken() const = 0;

protected:
    using TextParts = std::vector<const TextPart *>;

    const DrawingTheme &theme() const { return m_theme; }

    /// Takes over what the block says, which holds during the call only. Gives the distance from the top,
    /// as it is arranged so far, at which the drawing changes because of it.
    virtual double take(const BlockContent &content) = 0;
    /// Lays and places everything in that width and gives the height. It is asked after each take(), so that
    /// what stays the same must cost little: that is so for TextPart.
    virtual double arrange(double width) = 0;
    /// Appends all texts of the figure, in the order of reading; the selectable ones are one below another.
    virtual void listTexts(TextParts &) const {}
    /// Draws all but the texts, below them. Only what meets `clip` need be drawn.
    virtual void drawFigure(QPainter &, const QRectF &) const {}
    /// What can be pressed beside the links of the texts.
    virtual QList<Target> buttons() const { return {}; }

    /// A text with the links in it, for spoken().
    SpokenPart spokenText(const TextPart &text, QAccessible::Role role = QAccessible::StaticText) const;

private:
    void arrangeAll();

    const DrawingTheme &m_theme;
    double m_width = 0;
    double m_height = 0;
    TextParts m_texts;
};
