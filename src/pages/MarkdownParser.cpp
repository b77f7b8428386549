#include "pages/MarkdownParser.h"

#include "pages/Directive.h"
#include "pages/Lines.h"
#include "pages/NumericCharacters.h"

#include <algorithm>
#include <optional>

namespace {

bool isRule(QStringView line) {
    return line == u"---" || line == u"***" || line == u"___";
}

std::optional<block::Heading> headingOf(QStringView line) {
    constexpr qsizetype deepest = 6;
    qsizetype level = 0;
    while (level < line.size() && level <= deepest && line[level] == u'#')
        ++level;
    if (level == 0 || level > deepest || level == line.size() || line[level] != u' ')
        return std::nullopt;
    return block::Heading{static_cast<int>(level), trimmedLine(line.sliced(level)).toString()};
}

/// What a line holds if it is an item of a certain kind; nothing if it isn't one.
using ItemOf = std::optional<QStringView>(QStringView line);

std::optional<QStringView> quoteItem(QStringView line) {
    if (!line.startsWith(u'>'))
        return std::nullopt;
    return trimmedLine(line.sliced(1));
}

std::optional<QStringView> bulletItem(QStringView line) {
    if (line.size() < 2 || line[1] != u' ' || (line[0] != u'-' && line[0] != u'*' && line[0] != u'+'))
        return std::nullopt;
    return trimmedLine(line.sliced(2));
}

std::optional<QStringView> numberedItem(QStringView line) {
    const qsizetype point = numericPrefix(line);
    if (point == 0 || point + 2 >= line.size() || line[point] != u'.' || line[point + 1] != u' ')
        return std::nullopt;
    return trimmedLine(line.sliced(point + 2));
}

std::optional<QStringView> tableRow(QStringView line) {
    if (!line.startsWith(u'|'))
        return std::nullopt;
    line = line.sliced(1);
    if (line.endsWith(u'|'))
        line.chop(1);
    return line;
}

QStringList cellsOf(QStringView row) {
    QStringList cells;
    cells.reserve(row.count(u'|') + 1);
    qsizetype start = 0;
    for (qsizetype end = row.indexOf(u'|'); end >= 0; end = row.indexOf(u'|', start)) {
        cells.append(trimmedLine(row.sliced(start, end - start)).toString());
        start = end + 1;
    }
    cells.append(trimmedLine(row.sliced(start)).toString());
    return cells;
}

bool isSeparator(const QStringList &cells) {
    const auto isLine = [](const QString &cell) {
        return !cell.isEmpty() && std::all_of(cell.begin(), cell.end(), [](QChar character) {
            return character == u'-' || character == u':' || character == u' ';
        });
    };
    return std::all_of(cells.begin(), cells.end(), isLine);
}

class BlockParser {
public:
    explicit BlockParser(QStringView text) : m_text(text), m_lines(text) {}

    QList<MarkdownBlock> parse() {
        while (!m_lines.isAtEnd())
            takeLines();
        flush();
        return std::move(m_blocks);
    }

private:
    /// Takes the present line, and with it those that belong to it.
    void takeLines() {
        const QStringView line = m_lines.trimmed();
        if (isFence(line)) {
            takeFence();
        } else if (line.isEmpty()) {
            flush();
            m_lines.advance();
        } else if (isRule(line)) {
            append(block::Rule{});
            m_lines.advance();
        } else if (auto heading = headingOf(line)) {
            append(*std::move(heading));
            m_lines.advance();
        } else if (!takeList<block::Quote>(quoteItem) && !takeList<block::Bullet>(bulletItem) &&
                   !takeList<block::Numbered>(numberedItem) && !takeTable()) {
            m_paragraph.append(line.toString());
            m_lines.advance();
        }
    }

    void takeFence() {
        const QStringView info = trimmedLine(m_lines.trimmed().sliced(3));
        m_lines.advance();
        const qsizetype start = std::min(m_lines.start(), m_text.size());
        while (!m_lines.isAtEnd() && !isFence(m_lines.trimmed()))
            m_lines.advance();
        // The line feed before the closing line is no part of the body.
        const qsizetype end = std::max(start, m_lines.start() - 1);
        append(directiveBlock(info, m_text.sliced(start, end - start)));
        if (!m_lines.isAtEnd())
            m_lines.advance();
    }

    /// Takes the run of items that begins here; whether there is one.
    template<typename List>
    bool takeList(ItemOf itemOf) {
        auto item = itemOf(m_lines.trimmed());
        if (!item)
            return false;
        QStringList items;
        for (; item; item = nextItem(itemOf))
            items.append(item->toString());
        append(List{std::move(items)});
        return true;
    }

    bool takeTable() {
        auto row = tableRow(m_lines.trimmed());
        if (!row)
            return false;
        block::Table table{cellsOf(*row), {}};
        while ((row = nextItem(tableRow))) {
            QStringList cells = cellsOf(*row);
            if (!isSeparator(cells))
                table.rows.append(std::move(cells));
        }
        append(std::move(table));
        return true;
    }

    std::optional<QStringView> nextItem(ItemOf itemOf) {
        m_lines.advance();
        if (m_lines.isAtEnd())
            return std::nullopt;
        return itemOf(m_lines.trimmed());
    }

    /// Appends a block behind the paragraph that it ends.
    void append(MarkdownBlock &&next) {
        flush();
        m_blocks.append(std::move(next));
    }

    void flush() {
        if (m_paragraph.isEmpty())
            return;
        m_blocks.append(block::Paragraph{std::move(m_paragraph)});
        m_paragraph.clear();
    }

    QStringView m_text;
    LineWalk m_lines;
    QStringList m_paragraph; ///< plain lines that are no block yet, trimmed; none is empty
    QList<MarkdownBlock> m_blocks;
};

} // namespace

QList<MarkdownBlock> parseMarkdownBlocks(QStringView text) {
    return BlockParser(text).parse();
}
