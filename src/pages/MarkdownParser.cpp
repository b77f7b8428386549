#include "pages/MarkdownParser.h"

#include "pages/Directive.h"
#include "pages/Lines.h"
#include "pages/NumericCharacters.h"

#include <QVarLengthArray>

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
    return block::Heading{static_cast<int>(level), trimmedLine(line.sliced(level))};
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

/// Calls `take` with each cell of a row, trimmed, as long as it gives true; whether it always did.
template<typename Take>
bool forEachCell(QStringView row, const Take &take) {
    qsizetype start = 0;
    for (qsizetype end = row.indexOf(u'|'); end >= 0; end = row.indexOf(u'|', start)) {
        if (!take(trimmedLine(row.sliced(start, end - start))))
            return false;
        start = end + 1;
    }
    return take(trimmedLine(row.sliced(start)));
}

Texts cellsOf(QStringView row) {
    QVarLengthArray<QStringView, 32> cells;
    forEachCell(row, [&](QStringView cell) {
        cells.append(cell);
        return true;
    });
    return Texts(cells.begin(), cells.end());
}

bool isSeparator(QStringView row) {
    return forEachCell(row, [](QStringView cell) {
        return !cell.isEmpty() && std::all_of(cell.begin(), cell.end(), [](QChar character) {
            return character == u'-' || character == u':' || character == u' ';
        });
    });
}

class BlockParser {
public:
    explicit BlockParser(const QString &text) : m_text(text), m_lines(m_text) {}

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
            m_pending.append(line);
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
        append(directiveBlock(info, QStringView(m_text).sliced(start, end - start)));
        if (!m_lines.isAtEnd())
            m_lines.advance();
    }

    /// Takes the run of items that begins here; whether there is one.
    template<typename List>
    bool takeList(ItemOf itemOf) {
        auto item = itemOf(m_lines.trimmed());
        if (!item)
            return false;
        flush();
        for (; item; item = nextItem(itemOf))
            m_pending.append(*item);
        append(List{takePending()});
        return true;
    }

    bool takeTable() {
        auto row = tableRow(m_lines.trimmed());
        if (!row)
            return false;
        block::Table table{cellsOf(*row), {}};
        while ((row = nextItem(tableRow))) {
            if (!isSeparator(*row))
                table.rows.append(cellsOf(*row));
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
    template<typename Block>
    void append(Block &&next) {
        flush();
        m_blocks.append({m_text, std::forward<Block>(next)});
    }

    void flush() {
        if (!m_pending.isEmpty())
            m_blocks.append({m_text, block::Paragraph{takePending()}});
    }

    Texts takePending() {
        Texts lines(m_pending.begin(), m_pending.end());
        m_pending.clear();
        return lines;
    }

    const QString m_text;
    LineWalk m_lines;
    QVarLengthArray<QStringView, 64> m_pending; ///< trimmed lines of a paragraph, or of the list being taken
    QList<MarkdownBlock> m_blocks;
};

} // namespace

QList<MarkdownBlock> parseMarkdownBlocks(const QString &text) {
    return BlockParser(text).parse();
}
