#pragma once

#include "pages/drawing/BlockView.h"

#include <QMargins>

#include <memory>

/// The drawing of a text of the page dialect: its blocks, one below another. It is no widget; its
/// coordinates start at its own top left corner, in device-independent pixels. As a text, it is all that can
/// be selected in its blocks. Main thread; needs a QGuiApplication.
class MarkdownView : public JoinedText {
public:
    /// The margins stay free, but for what figures draw beyond their area.
    explicit MarkdownView(const DrawingTheme &theme, const QMargins &margins = {})
        : m_theme(theme),
          m_margins(margins) {}
    MarkdownView(const MarkdownView &) = delete;
    MarkdownView &operator=(const MarkdownView &) = delete;

    const DrawingTheme &theme() const { return m_theme; }
    void setTheme(const DrawingTheme &theme);

    const QString &text() const { return m_text; }
    /// Shows another text. A block that is the same at the same place isn't touched. Gives the distance from
    /// the top at which the drawing changes; nothing above it does.
    double setText(const QString &text);

    /// Gives the height in that width, both with the margins. Until the first call nothing is laid.
    double layIn(double width);
    double width() const { return m_width; }
    double height() const;

    /// Draws what meets `clip`.
    virtual void draw(QPainter &painter, const QRectF &clip, const TextSelection &selection = {}) const;

    size_t blockCount() const { return m_places.size(); }
    const BlockView &block(size_t index) const { return *m_places[index].view; }
    double topOf(size_t index) const { return m_places[index].top; }
    QPointF originOf(size_t index) const { return {double(m_margins.left()), topOf(index)}; }
    /// The last block whose top isn't below that height, or the first.
    size_t blockAt(double y) const;
    /// True if there is text to select at that height.
    bool isTextAt(double y) const;

    /// What can be pressed, in the order of reading.
    QList<Target> targets() const;
    std::optional<Target> targetAt(const QPointF &point) const;

protected:
    /// Only before the first layIn().
    void setMargins(const QMargins &margins) { m_margins = margins; }
    const QMargins &margins() const { return m_margins; }

private:
    struct Place {
        std::unique_ptr<BlockView> view;
        double top = 0;
        int start = 0; ///< where its text begins in that of all blocks
    };

    double showBlocks();
    /// Shows a block in the place of `shown`, if there was one, and gives the height at which that changes
    /// something.
    double show(const BlockContent &content, const BlockContent *shown, Place &place);
    void stack();
    double blockWidth() const { return m_width - m_margins.left() - m_margins.right(); }

    DrawingTheme m_theme;
    QMargins m_margins;
    QString m_text;
    double m_width = 0;
    QList<MarkdownBlock> m_blocks; ///< as many as places once there is a width
    std::vector<Place> m_places;
};
