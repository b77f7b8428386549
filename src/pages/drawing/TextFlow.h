#pragma once

#include "pages/drawing/SelectableText.h"

#include <QFont>
#include <QTextLayout>
#include <QTextOption>

#include <memory>
#include <vector>

class QPainter;

/// Text laid into lines of a given width, paragraph by paragraph, and a very long paragraph in pieces that
/// can't be seen. A change of the text lays only what comes after what stayed the same, so a text that
/// grows at its end costs what its last piece costs. No widget; needs a QGuiApplication.
class TextFlow : public SelectableText {
public:
    TextFlow();
    ~TextFlow() override;
    TextFlow(const TextFlow &) = delete;
    TextFlow &operator=(const TextFlow &) = delete;

    const QString &text() const { return m_text; }

    /// Parts of the text in a format of their own, in order, none over another.
    using Formats = QList<QTextLayout::FormatRange>;

    /// A property of a format: marks that turn the direction of writing are drawn as signs and turn nothing.
    static constexpr int showsTurns = QTextFormat::UserProperty;

    /// Gives the distance from the top at which the drawing changes; nothing above it does.
    double setText(const QString &text, const Formats &formats = {});

    /// `lineSpacing` comes between two lines, in addition to their height. With `alignment` left, a
    /// paragraph that is written from the right stands at the right.
    void setFormat(const QFont &font, int lineSpacing, Qt::Alignment alignment);
    void setWidth(double width);

    double width() const { return m_width; }
    double height() const;
    /// The width of the widest line.
    double usedWidth() const;

    /// Draws what meets `clip`, with the painter's pen. What is selected gets that background, and that ink
    /// whatever its own is.
    void draw(QPainter &painter, const QRectF &clip, const TextSelection &selection,
              const QColor &selectionColor, const QColor &selectedInk) const;

    /// The distance from the top to the baseline of the first line.
    double firstBaseline() const;
    /// What a part of the text covers, line by line.
    QList<QRectF> areasOf(int start, int end) const;

    int length() const override { return int(m_text.size()); }
    QString textBetween(int start, int end) const override { return m_text.mid(start, end - start); }
    int positionAt(const QPointF &point) const override;
    QRectF caretAt(int position) const override;
    int moved(int position, Move move) const override;
    TextSelection wordAt(int position) const override;
    TextSelection paragraphAt(int position) const override;

private:
    struct Piece;
    enum class Way { back, forth };

    /// Lays anew from the piece at `first` on.
    void layPieces(size_t first);
    std::unique_ptr<Piece> laidPiece(int start) const;
    /// Where a long paragraph is divided: only where nothing can be seen of it, or anywhere.
    enum class Cut { unseen, anywhere };
    /// Makes a piece of the first lines of a long paragraph's rest; false if it can't be divided there.
    bool layBeginning(Piece &piece, Cut cut) const;
    /// The direction of the paragraph of which a piece begins at `start`; all before it are laid.
    Qt::LayoutDirection directionAt(int start, const QString &text) const;
    /// Gives the height, with the spacing after the last line.
    double layOut(QTextLayout &layout, int start, int length) const;
    /// The formats that a stretch of the text has, in its own places.
    Formats formatsIn(int start, int length) const;
    void stack(size_t first);
    /// True if every paragraph is one line from the left, which then stands so in any width it fits in.
    bool standsAtTheLeft() const;
    /// What a piece draws of a selection, in its own places.
    TextSelection partOf(const TextSelection &selection, const Piece &piece) const;
    size_t indexOf(int position) const;
    const Piece &pieceAtHeight(double y) const;
    int stepped(int position, Way way, QTextLayout::CursorMode mode) const;
    /// The place below or above `position` in the line at that height; itself if there is no line.
    int inLineAt(double y, int position) const;
    QTextLine lineOf(const Piece &piece, int position) const;

    QString m_text;
    Formats m_formats;
    QFont m_font;
    QTextOption m_option;
    int m_lineSpacing = 0;
    double m_width = 0;
    std::vector<std::unique_ptr<Piece>> m_pieces; ///< never empty
};
