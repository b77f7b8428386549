#include "pages/drawing/TextFlow.h"

#include "pages/drawing/GlyphContext.h"
#include "pages/drawing/LongParagraph.h"

#include <QGlyphRun>
#include <QPainter>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace {

constexpr int caretWidth = 1;
constexpr int tabColumns = 4;

/// The layout of a piece goes on after it, so that its last line is laid as one within a paragraph.
/// Those lines stand where nothing is drawn.
constexpr double outOfSight = 1'000'000;

/// Where two lists of formats begin to differ; `otherwise` if they don't.
int firstDifference(const TextFlow::Formats &one, const TextFlow::Formats &other, int otherwise) {
    const auto [first, second] = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
    const bool oneEnds = first == one.end();
    const bool otherEnds = second == other.end();
    if (oneEnds || otherEnds)
        return oneEnds && otherEnds ? otherwise : oneEnds ? second->start : first->start;
    if (first->start == second->start && first->format == second->format)
        return first->start + std::min(first->length, second->length);
    return std::min(first->start, second->start);
}

/// From left to right.
struct Stretch {
    double left = 0;
    double right = 0;
};

/// Those that meet are one.
QList<Stretch> joined(QList<Stretch> stretches) {
    std::sort(stretches.begin(), stretches.end(),
              [](const Stretch &one, const Stretch &other) { return one.left < other.left; });
    QList<Stretch> joined;
    for (const Stretch &stretch : stretches) {
        if (joined.isEmpty() || stretch.left > joined.last().right)
            joined.append(stretch);
        else
            joined.last().right = std::max(joined.last().right, stretch.right);
    }
    return joined;
}

/// What a part of a line covers, which is in several places where the direction changes.
QList<Stretch> stretchesOf(const QTextLayout &layout, const QTextLine &line, int from, int to) {
    const auto text = QStringView(layout.text()).sliced(line.textStart(), line.textLength());
    if (longParagraph::runsFromTheLeft(text))
        return {{line.cursorToX(from), line.cursorToX(to)}};
    QList<Stretch> stretches;
    for (const QGlyphRun &run : line.glyphRuns(from, to - from)) {
        const QRectF area = run.boundingRect();
        stretches.append({area.left(), area.right()});
    }
    return joined(stretches);
}

/// The marks that turn the direction of what follows them (UAX #9, 2.1 to 2.5).
bool turnsDirection(QChar character) {
    return (character >= QChar(0x202A) && character <= QChar(0x202E)) ||
           (character >= QChar(0x2066) && character <= QChar(0x2069));
}

void showTurns(QString &text, const TextFlow::Formats &formats) {
    for (const QTextLayout::FormatRange &range : formats) {
        if (!range.format.boolProperty(TextFlow::showsTurns))
            continue;
        const auto first = text.begin() + range.start;
        std::replace_if(first, first + range.length, turnsDirection, QChar(QChar::ReplacementCharacter));
    }
}

} // namespace

/// The text between two line ends, without them; or some lines of it if it is very long.
struct TextFlow::Piece {
    int start = 0;
    int length = 0;
    int reach = 0; ///< the place behind the text that decided how it is laid
    int lineCount = 0;
    double top = 0;
    double height = 0; ///< with the spacing after its last line
    QTextLayout layout;

    int end() const { return start + length; }
    bool endsParagraph() const { return reach == end() + 1; }
    double bottom() const { return top + height; }
};

TextFlow::TextFlow() {
    m_option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layPieces(0);
}

TextFlow::~TextFlow() = default;

double TextFlow::setText(const QString &text, const Formats &formats) {
    const auto differing = std::mismatch(m_text.cbegin(), m_text.cend(), text.cbegin(), text.cend());
    const int sameText = int(std::distance(m_text.cbegin(), differing.first));
    const int longer = int(std::max(m_text.size(), text.size()));
    const int same = std::min(sameText, firstDifference(m_formats, formats, longer));
    if (same == longer)
        return height();
    const auto changed = std::find_if(m_pieces.begin(), m_pieces.end(),
                                      [same](const auto &piece) { return piece->reach > same; });
    const auto first = size_t(std::distance(m_pieces.begin(), changed));
    const double top = m_pieces[first]->top;
    m_text = text;
    m_formats = formats;
    layPieces(first);
    return top;
}

void TextFlow::setFormat(const QFont &font, int lineSpacing, Qt::Alignment alignment) {
    if (font == m_font && lineSpacing == m_lineSpacing && alignment == m_option.alignment())
        return;
    m_font = font;
    m_option.setTabStopDistance(tabColumns * QFontMetricsF(font).horizontalAdvance(u' '));
    m_lineSpacing = lineSpacing;
    m_option.setAlignment(alignment);
    layPieces(0);
}

void TextFlow::setWidth(double width) {
    const bool stays = width == m_width || (standsAtTheLeft() && usedWidth() <= std::min(width, m_width));
    m_width = width;
    if (!stays)
        layPieces(0);
}

bool TextFlow::standsAtTheLeft() const {
    const auto isOneLine = [](const auto &piece) {
        return piece->endsParagraph() && piece->lineCount == 1 && !piece->layout.text().isRightToLeft();
    };
    return m_option.alignment() == Qt::AlignLeft && std::all_of(m_pieces.begin(), m_pieces.end(), isOneLine);
}

double TextFlow::height() const {
    return m_pieces.back()->bottom() - m_lineSpacing;
}

double TextFlow::firstBaseline() const {
    return m_pieces.front()->layout.lineAt(0).ascent();
}

double TextFlow::usedWidth() const {
    double widest = 0;
    for (const auto &piece : m_pieces) {
        for (int line = 0; line < piece->lineCount; ++line)
            widest = std::max(widest, piece->layout.lineAt(line).naturalTextWidth());
    }
    return widest;
}

void TextFlow::draw(QPainter &painter, const QRectF &clip, const TextSelection &selection,
                    const QColor &selectionColor, const QColor &selectedInk) const {
    for (const auto &piece : m_pieces) {
        if (piece->bottom() < clip.top())
            continue;
        if (piece->top > clip.bottom())
            break;
        QList<QTextLayout::FormatRange> ranges;
        const TextSelection part = partOf(selection, *piece);
        if (!part.isEmpty()) {
            QTextCharFormat format;
            format.setBackground(selectionColor);
            format.setForeground(selectedInk);
            ranges.append({part.start(), part.end() - part.start(), format});
        }
        piece->layout.draw(&painter, {0, piece->top}, ranges, clip);
    }
}

TextSelection TextFlow::partOf(const TextSelection &selection, const Piece &piece) const {
    // The ground of the line where a selection starts or ends is rounded in a way of its own, so a
    // piece is told if there is more of it before or after.
    const bool startsParagraph = piece.start == 0 || m_text.at(piece.start - 1) == u'\n';
    const int first = startsParagraph ? 0 : -1;
    const int last = int(piece.layout.text().size());
    return {std::clamp(selection.start() - piece.start, first, last),
            std::clamp(selection.end() - piece.start, first, last)};
}

int TextFlow::positionAt(const QPointF &point) const {
    const Piece &piece = pieceAtHeight(point.y());
    const double y = point.y() - piece.top;
    int index = 0;
    while (index + 1 < piece.lineCount && piece.layout.lineAt(index + 1).y() <= y)
        ++index;
    return piece.start + piece.layout.lineAt(index).xToCursor(point.x());
}

QRectF TextFlow::caretAt(int position) const {
    const Piece &piece = *m_pieces[indexOf(position)];
    const QTextLine line = lineOf(piece, position);
    return {line.cursorToX(position - piece.start), piece.top + line.y(), caretWidth, line.height()};
}

int TextFlow::moved(int position, Move move) const {
    const Piece &piece = *m_pieces[indexOf(position)];
    const QTextLine line = lineOf(piece, position);
    const bool isLastLine = line.lineNumber() + 1 == piece.layout.lineCount();
    switch (move) {
    case Move::previousCharacter:
        return stepped(position, Way::back, QTextLayout::SkipCharacters);
    case Move::nextCharacter:
        return stepped(position, Way::forth, QTextLayout::SkipCharacters);
    case Move::previousWord:
        return stepped(position, Way::back, QTextLayout::SkipWords);
    case Move::nextWord:
        return stepped(position, Way::forth, QTextLayout::SkipWords);
    case Move::lineStart:
        return piece.start + line.textStart();
    case Move::lineEnd:
        return piece.start + line.textStart() + line.textLength() - (isLastLine ? 0 : 1);
    case Move::lineUp:
        return inLineAt(caretAt(position).top() - m_lineSpacing - 1, position);
    case Move::lineDown:
        return inLineAt(caretAt(position).bottom() + m_lineSpacing + 1, position);
    case Move::textStart:
        return 0;
    case Move::textEnd:
        return int(m_text.size());
    }
    Q_UNREACHABLE();
}

int TextFlow::stepped(int position, Way way, QTextLayout::CursorMode mode) const {
    const TextSelection paragraph = paragraphAt(position);
    const int inside = position - paragraph.start();
    // A word may go beyond a piece. Where the characters end is known without laying them.
    const QTextLayout characters(m_text.mid(paragraph.start(), paragraph.end() - paragraph.start()));
    if (way == Way::forth)
        return position == paragraph.end() ? std::min(position + 1, int(m_text.size()))
                                           : paragraph.start() + characters.nextCursorPosition(inside, mode);
    return inside == 0 ? std::max(position - 1, 0)
                       : paragraph.start() + characters.previousCursorPosition(inside, mode);
}

int TextFlow::inLineAt(double y, int position) const {
    const bool isOutside = y < 0 || y >= m_pieces.back()->bottom();
    return isOutside ? position : positionAt({caretAt(position).x(), y});
}

TextSelection TextFlow::wordAt(int position) const {
    const TextSelection paragraph = paragraphAt(position);
    const QString text = m_text.mid(paragraph.start(), paragraph.end() - paragraph.start());
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    finder.setPosition(position - paragraph.start());
    const auto start = finder.isAtBoundary() && finder.position() < text.size() ? finder.position()
                                                                                : finder.toPreviousBoundary();
    finder.setPosition(std::max<qsizetype>(start, 0));
    const auto end = finder.toNextBoundary();
    return {paragraph.start() + int(std::max<qsizetype>(start, 0)),
            paragraph.start() + int(end < 0 ? text.size() : end)};
}

TextSelection TextFlow::paragraphAt(int position) const {
    const auto lineEndBefore = QStringView(m_text).left(position).lastIndexOf(u'\n');
    const auto lineEnd = m_text.indexOf(u'\n', position);
    return {int(lineEndBefore) + 1, int(lineEnd < 0 ? m_text.size() : lineEnd)};
}

void TextFlow::layPieces(size_t first) {
    int start = first < m_pieces.size() ? m_pieces[first]->start : 0;
    m_pieces.resize(first);
    // After a line end at the end of the text there is one more paragraph, an empty one.
    while (start <= m_text.size()) {
        m_pieces.push_back(laidPiece(start));
        start = m_pieces.back()->end() + (m_pieces.back()->endsParagraph() ? 1 : 0);
    }
    stack(first);
}

std::unique_ptr<TextFlow::Piece> TextFlow::laidPiece(int start) const {
    const auto lineEnd = m_text.indexOf(u'\n', start);
    const int length = int(lineEnd < 0 ? m_text.size() : lineEnd) - start;
    auto piece = std::make_unique<Piece>();
    piece->start = start;
    if (length > longParagraph::pieceReach && layBeginning(*piece, Cut::unseen))
        return piece;
    if (length > longParagraph::endless && layBeginning(*piece, Cut::anywhere))
        return piece;
    piece->length = length;
    piece->reach = piece->end() + 1;
    piece->height = layOut(piece->layout, start, length);
    piece->lineCount = piece->layout.lineCount();
    return piece;
}

bool TextFlow::layBeginning(Piece &piece, Cut cut) const {
    const bool isUnseen = cut == Cut::unseen;
    const int reach = isUnseen ? longParagraph::pieceReach : longParagraph::endless;
    if (isUnseen && !longParagraph::runsFromTheLeft(QStringView(m_text).sliced(piece.start, reach)))
        return false;
    layOut(piece.layout, piece.start, reach);
    piece.lineCount =
        isUnseen ? longParagraph::separableLines(piece.layout) : longParagraph::cuttableLines(piece.layout);
    if (piece.lineCount == 0)
        return false;
    const QTextLine next = piece.layout.lineAt(piece.lineCount);
    piece.length = next.textStart();
    piece.reach = piece.start + reach + 1;
    piece.height = next.y();
    for (int line = piece.lineCount; line < piece.layout.lineCount(); ++line)
        piece.layout.lineAt(line).setPosition({0, outOfSight});
    return true;
}

Qt::LayoutDirection TextFlow::directionAt(int start, const QString &text) const {
    const bool goesOn = start > 0 && m_text.at(start - 1) != u'\n';
    if (goesOn)
        return m_pieces.back()->layout.textOption().textDirection();
    return text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

double TextFlow::layOut(QTextLayout &layout, int start, int length) const {
    const Formats formats = formatsIn(start, length);
    QString text = m_text.mid(start, length);
    showTurns(text, formats);
    QTextOption option = m_option;
    option.setTextDirection(directionAt(start, text));
    if (option.alignment() == Qt::AlignLeft && option.textDirection() == Qt::RightToLeft)
        option.setAlignment(Qt::AlignRight);
    layout.setText(text);
    layout.setFont(m_font);
    layout.setTextOption(option);
    if (!formats.isEmpty())
        layout.setFormats(formats);
    layout.setCacheEnabled(true);
    double height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(m_width);
        line.setPosition({0, height});
        height += line.height() + m_lineSpacing;
    }
    layout.endLayout();
    return height;
}

TextFlow::Formats TextFlow::formatsIn(int start, int length) const {
    Formats formats;
    const auto isBefore = [](const QTextLayout::FormatRange &range, int place) {
        return range.start + range.length <= place;
    };
    auto range = std::lower_bound(m_formats.begin(), m_formats.end(), start, isBefore);
    for (; range != m_formats.end() && range->start < start + length; ++range) {
        const int first = std::max(range->start - start, 0);
        const int last = std::min(range->start + range->length - start, length);
        formats.append({first, last - first, range->format});
    }
    return formats + glyphsApart(QStringView(m_text).sliced(start, length));
}

QList<QRectF> TextFlow::areasOf(int start, int end) const {
    QList<QRectF> areas;
    for (size_t index = indexOf(start); index < m_pieces.size() && m_pieces[index]->start < end; ++index) {
        const Piece &piece = *m_pieces[index];
        const int first = std::max(start - piece.start, 0);
        const int last = std::min(end - piece.start, piece.length);
        for (int number = 0; number < piece.lineCount; ++number) {
            const QTextLine line = piece.layout.lineAt(number);
            const int from = std::max(first, line.textStart());
            const int to = std::min(last, line.textStart() + line.textLength());
            if (from >= to)
                continue;
            for (const auto &[left, right] : stretchesOf(piece.layout, line, from, to))
                areas.append({left, piece.top + line.y(), right - left, line.height()});
        }
    }
    return areas;
}

void TextFlow::stack(size_t first) {
    double top = first == 0 ? 0 : m_pieces[first - 1]->bottom();
    for (size_t index = first; index < m_pieces.size(); ++index) {
        m_pieces[index]->top = top;
        top = m_pieces[index]->bottom();
    }
}

size_t TextFlow::indexOf(int position) const {
    const auto after = std::upper_bound(m_pieces.begin(), m_pieces.end(), position,
                                        [](int place, const auto &piece) { return place < piece->start; });
    return after == m_pieces.begin() ? 0 : size_t(std::distance(m_pieces.begin(), after)) - 1;
}

const TextFlow::Piece &TextFlow::pieceAtHeight(double y) const {
    const auto after = std::upper_bound(m_pieces.begin(), m_pieces.end(), y,
                                        [](double height, const auto &piece) { return height < piece->top; });
    return after == m_pieces.begin() ? **after : **std::prev(after);
}

QTextLine TextFlow::lineOf(const Piece &piece, int position) const {
    return piece.layout.lineForTextPosition(std::clamp(position - piece.start, 0, piece.length));
}
