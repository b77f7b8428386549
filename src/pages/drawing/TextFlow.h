#pragma once

#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QTextLayout>
#include <QTextOption>

#include <memory>
#include <vector>

class QPainter;

/// A stretch of a text between the place where a person began to select and the caret. Places count
/// UTF-16 code units.
struct TextSelection {
    int anchor = 0;
    int caret = 0;

    bool isEmpty() const { return anchor == caret; }
    int start() const { return std::min(anchor, caret); }
    int end() const { return std::max(anchor, caret); }

    bool operator==(const TextSelection &) const = default;
};

/// Text laid into lines of a given width, paragraph by paragraph, and a very long paragraph in pieces that
/// can't be seen. A change of the text lays only what comes after what stayed the same, so a text that
/// grows at its end costs what its last piece costs. No widget; needs a QGuiApplication.
class TextFlow {
public:
    enum class Move {
        previousCharacter,
        nextCharacter,
        previousWord,
        nextWord,
        lineStart,
        lineEnd,
        lineUp,
        lineDown,
        textStart,
        textEnd
    };

    TextFlow();
    ~TextFlow();
    TextFlow(const TextFlow &) = delete;
    TextFlow &operator=(const TextFlow &) = delete;

    const QString &text() const { return m_text; }

    /// Parts of the text in a format of their own, in order, none over another.
    using Formats = QList<QTextLayout::FormatRange>;

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

    /// Draws what meets `clip`, with the painter's pen. What is selected gets that background.
    void draw(QPainter &painter, const QRectF &clip, const TextSelection &selection,
              const QColor &selectionColor) const;

    /// The place in the text nearest to a point.
    int positionAt(const QPointF &point) const;
    /// What a part of the text covers, line by line.
    QList<QRectF> areasOf(int start, int end) const;
    /// Where a caret before `position` stands.
    QRectF caretAt(int position) const;
    /// The place that a caret comes to; the same one if there is nowhere to go.
    int moved(int position, Move move) const;
    /// The word, or the paragraph, around a place.
    TextSelection wordAt(int position) const;
    TextSelection paragraphAt(int position) const;

private:
    struct Piece;
    enum class Way { back, forth };

    /// Lays anew from the piece at `first` on.
    void layPieces(size_t first);
    std::unique_ptr<Piece> laidPiece(int start) const;
    /// Makes a piece of the first lines of a long paragraph's rest; false if it can't be divided there.
    bool layBeginning(Piece &piece) const;
    /// Gives the height, with the spacing after the last line.
    double layOut(QTextLayout &layout, int start, int length) const;
    /// The formats that a stretch of the text has, in its own places.
    Formats formatsIn(int start, int length) const;
    void stack(size_t first);
    /// What a piece draws of a selection, in its own places.
    TextSelection partOf(const TextSelection &selection, const Piece &piece) const;
    const Piece &pieceOf(int position) const;
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
