#include "screens/TextFlow.h"

#include <QPainter>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace {
constexpr int caretWidth = 1;
}

/// The text between two line ends, without them.
struct TextFlow::Paragraph {
    int start = 0;
    int length = 0;
    double top = 0;
    double height = 0; ///< with the spacing after its last line
    QTextLayout layout;

    int end() const { return start + length; }
    double bottom() const { return top + height; }
};

TextFlow::TextFlow() {
    m_option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layParagraphs(0);
}

TextFlow::~TextFlow() = default;

double TextFlow::setText(const QString &text) {
    const auto differing = std::mismatch(m_text.cbegin(), m_text.cend(), text.cbegin(), text.cend());
    const int same = int(std::distance(m_text.cbegin(), differing.first));
    if (same == m_text.size() && same == text.size())
        return height();
    const auto changed = std::find_if(m_paragraphs.begin(), m_paragraphs.end(),
                                      [same](const auto &paragraph) { return paragraph->end() >= same; });
    const auto first = size_t(std::distance(m_paragraphs.begin(), changed));
    const double top = m_paragraphs[first]->top;
    m_text = text;
    layParagraphs(first);
    return top;
}

void TextFlow::setFormat(const QFont &font, int lineSpacing, Qt::Alignment alignment) {
    if (font == m_font && lineSpacing == m_lineSpacing && alignment == m_option.alignment())
        return;
    m_font = font;
    m_lineSpacing = lineSpacing;
    m_option.setAlignment(alignment);
    layParagraphs(0);
}

void TextFlow::setWidth(double width) {
    if (width == m_width)
        return;
    m_width = width;
    for (auto &paragraph : m_paragraphs)
        layOut(*paragraph);
    stack(0);
}

double TextFlow::height() const {
    return m_paragraphs.back()->bottom() - m_lineSpacing;
}

double TextFlow::usedWidth() const {
    double widest = 0;
    for (const auto &paragraph : m_paragraphs) {
        for (int line = 0; line < paragraph->layout.lineCount(); ++line)
            widest = std::max(widest, paragraph->layout.lineAt(line).naturalTextWidth());
    }
    return widest;
}

void TextFlow::draw(QPainter &painter, const QRectF &clip, const TextSelection &selection,
                    const QColor &selectionColor) const {
    for (const auto &paragraph : m_paragraphs) {
        if (paragraph->bottom() < clip.top())
            continue;
        if (paragraph->top > clip.bottom())
            break;
        QList<QTextLayout::FormatRange> ranges;
        const int from = std::clamp(selection.start() - paragraph->start, 0, paragraph->length);
        const int to = std::clamp(selection.end() - paragraph->start, 0, paragraph->length);
        if (from < to) {
            QTextCharFormat format;
            format.setBackground(selectionColor);
            ranges.append({from, to - from, format});
        }
        paragraph->layout.draw(&painter, {0, paragraph->top}, ranges, clip);
    }
}

int TextFlow::positionAt(const QPointF &point) const {
    const Paragraph &paragraph = paragraphAtHeight(point.y());
    const double y = point.y() - paragraph.top;
    const int lines = paragraph.layout.lineCount();
    int index = 0;
    while (index + 1 < lines && paragraph.layout.lineAt(index + 1).y() <= y)
        ++index;
    return paragraph.start + paragraph.layout.lineAt(index).xToCursor(point.x());
}

QRectF TextFlow::caretAt(int position) const {
    const Paragraph &paragraph = paragraphOf(position);
    const QTextLine line = lineOf(paragraph, position);
    return {line.cursorToX(position - paragraph.start), paragraph.top + line.y(), caretWidth, line.height()};
}

int TextFlow::moved(int position, Move move) const {
    const Paragraph &paragraph = paragraphOf(position);
    const QTextLine line = lineOf(paragraph, position);
    const bool isLastLine = line.lineNumber() + 1 == paragraph.layout.lineCount();
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
        return paragraph.start + line.textStart();
    case Move::lineEnd:
        return paragraph.start + line.textStart() + line.textLength() - (isLastLine ? 0 : 1);
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
    const Paragraph &paragraph = paragraphOf(position);
    const int inside = position - paragraph.start;
    if (way == Way::forth)
        return inside == paragraph.length
                   ? std::min(position + 1, int(m_text.size()))
                   : paragraph.start + paragraph.layout.nextCursorPosition(inside, mode);
    return inside == 0 ? std::max(position - 1, 0)
                       : paragraph.start + paragraph.layout.previousCursorPosition(inside, mode);
}

int TextFlow::inLineAt(double y, int position) const {
    const bool isOutside = y < 0 || y >= m_paragraphs.back()->bottom();
    return isOutside ? position : positionAt({caretAt(position).x(), y});
}

TextSelection TextFlow::wordAt(int position) const {
    const Paragraph &paragraph = paragraphOf(position);
    const QString text = paragraph.layout.text();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    finder.setPosition(position - paragraph.start);
    const auto start = finder.isAtBoundary() && finder.position() < text.size() ? finder.position()
                                                                                : finder.toPreviousBoundary();
    finder.setPosition(std::max<qsizetype>(start, 0));
    const auto end = finder.toNextBoundary();
    return {paragraph.start + int(std::max<qsizetype>(start, 0)),
            paragraph.start + int(end < 0 ? text.size() : end)};
}

TextSelection TextFlow::paragraphAt(int position) const {
    const Paragraph &paragraph = paragraphOf(position);
    return {paragraph.start, paragraph.end()};
}

void TextFlow::layParagraphs(size_t first) {
    int start = first < m_paragraphs.size() ? m_paragraphs[first]->start : 0;
    m_paragraphs.resize(first);
    while (true) {
        const auto lineEnd = m_text.indexOf(u'\n', start);
        auto paragraph = std::make_unique<Paragraph>();
        paragraph->start = start;
        paragraph->length = int(lineEnd < 0 ? m_text.size() : lineEnd) - start;
        layOut(*paragraph);
        m_paragraphs.push_back(std::move(paragraph));
        if (lineEnd < 0)
            break;
        start = int(lineEnd) + 1;
    }
    stack(first);
}

void TextFlow::layOut(Paragraph &paragraph) const {
    QTextLayout &layout = paragraph.layout;
    const QString text = m_text.mid(paragraph.start, paragraph.length);
    QTextOption option = m_option;
    if (option.alignment() == Qt::AlignLeft && text.isRightToLeft())
        option.setAlignment(Qt::AlignRight);
    layout.setText(text);
    layout.setFont(m_font);
    layout.setTextOption(option);
    layout.setCacheEnabled(true);
    double height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(m_width);
        line.setPosition({0, height});
        height += line.height() + m_lineSpacing;
    }
    layout.endLayout();
    paragraph.height = height;
}

void TextFlow::stack(size_t first) {
    double top = first == 0 ? 0 : m_paragraphs[first - 1]->bottom();
    for (size_t index = first; index < m_paragraphs.size(); ++index) {
        m_paragraphs[index]->top = top;
        top = m_paragraphs[index]->bottom();
    }
}

const TextFlow::Paragraph &TextFlow::paragraphOf(int position) const {
    const auto after =
        std::upper_bound(m_paragraphs.begin(), m_paragraphs.end(), position,
                         [](int place, const auto &paragraph) { return place < paragraph->start; });
    return after == m_paragraphs.begin() ? **after : **std::prev(after);
}

const TextFlow::Paragraph &TextFlow::paragraphAtHeight(double y) const {
    const auto after =
        std::upper_bound(m_paragraphs.begin(), m_paragraphs.end(), y,
                         [](double height, const auto &paragraph) { return height < paragraph->top; });
    return after == m_paragraphs.begin() ? **after : **std::prev(after);
}

QTextLine TextFlow::lineOf(const Paragraph &paragraph, int position) const {
    return paragraph.layout.lineForTextPosition(std::clamp(position - paragraph.start, 0, paragraph.length));
}
