#include "pages/PlainDialect.h"

#include <QRegularExpression>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

using Options = QRegularExpression::PatternOptions;

/// The whole of `text` against a pattern in which "." is any character.
QRegularExpressionMatch match(const QString &text, const QString &pattern) {
    const Options options =
        QRegularExpression::DotMatchesEverythingOption | QRegularExpression::UseUnicodePropertiesOption;
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern), options).match(text);
}

bool is(const QString &text, const QString &pattern) {
    return match(text, pattern).hasMatch();
}

QString trimmed(QString text) {
    while (is(text.left(1), u"[\\t\\p{Zs}]"_s))
        text.remove(0, 1);
    while (is(text.right(1), u"[\\t\\p{Zs}]"_s))
        text.chop(1);
    return text;
}

QStringList allTrimmed(const QStringList &texts) {
    QStringList result;
    for (const QString &text : texts)
        result.append(trimmed(text));
    return result;
}

QStringList plainLines(const QString &body) {
    QStringList lines = allTrimmed(body.split(u'\n'));
    lines.removeAll(QString());
    return lines;
}

/// The two sides of the first mark; nothing on the right without one.
TextPair cut(const QString &line, QChar mark) {
    return {trimmed(line.section(mark, 0, 0)), trimmed(line.section(mark, 1))};
}

QList<TextPair> labelledValues(const QString &body) {
    QList<TextPair> rows;
    for (const QString &line : plainLines(body)) {
        if (line.contains(u':') && !cut(line, u':').left.isEmpty())
            rows.append(cut(line, u':'));
    }
    return rows;
}

double number(QString text) {
    const QByteArray bytes = trimmed(text.remove(u'%').remove(u'$').remove(u',')).toUtf8();
    char *end = nullptr;
    const double value = std::strtod(bytes.constData(), &end);
    return bytes.isEmpty() || end != bytes.constData() + bytes.size() ? 1.0 : value;
}

QList<LabelledNumber> labelledNumbers(const QString &body) {
    QList<LabelledNumber> rows;
    for (const TextPair &row : labelledValues(body))
        rows.append({row.left, number(row.right)});
    return rows;
}

QStringList flowSteps(const QString &body) {
    QStringList steps;
    for (const QString &line : plainLines(body)) {
        for (const QString &step : allTrimmed(line.split(u"->"_s))) {
            if (!step.isEmpty() && (steps.isEmpty() || steps.last() != step))
                steps.append(step);
        }
    }
    return steps;
}

QList<TextPair> pairs(const QString &body) {
    QList<TextPair> rows;
    for (const QString &line : plainLines(body)) {
        if (!cut(line, u'|').left.isEmpty())
            rows.append(cut(line, u'|'));
    }
    return rows;
}

MarkdownBlock directive(const QString &info, const QString &body) {
    const QString name = trimmed(info.section(u':', 0, 0)).toLower();
    const QString color = trimmed(info.section(u':', 1)).toLower();
    if (name == u"metric"_s)
        return block::Metric{labelledValues(body), color};
    if (name == u"chart"_s)
        return block::Chart{labelledNumbers(body), color};
    if (name == u"line"_s)
        return block::Line{labelledNumbers(body), color};
    if (name == u"donut"_s)
        return block::Donut{labelledNumbers(body), color};
    if (name == u"progress"_s)
        return block::Progress{labelledNumbers(body), color};
    if (name == u"callout"_s)
        return block::Callout{body.trimmed(), color};
    if (name == u"timeline"_s)
        return block::Timeline{plainLines(body), color};
    if (name == u"sources"_s)
        return block::Sources{plainLines(body)};
    if (name == u"flow"_s)
        return block::Flow{flowSteps(body), color};
    if (name == u"compare"_s)
        return block::Compare{pairs(body), color};
    if (name == u"cards"_s)
        return block::Cards{pairs(body), color};
    if (name == u"spec"_s)
        return block::Spec{pairs(body)};
    if (name == u"subtitle"_s)
        return block::Subtitle{body.trimmed()};
    if (name == u"divider"_s)
        return block::Divider{color};
    return block::Code{info, body};
}

QStringList cells(QString row) {
    row.remove(0, 1);
    if (row.endsWith(u'|'))
        row.chop(1);
    return allTrimmed(row.split(u'|'));
}

bool isSeparator(const QStringList &row) {
    for (const QString &cell : row) {
        if (!is(cell, u"[-: ]+"_s))
            return false;
    }
    return true;
}

/// A line with the pattern's kind of item, whose first group is what the item holds.
const QString quote = u">(.*)"_s;
const QString bullet = u"[-*+] (.*)"_s;
const QString numbered = u"[\\p{N}一二三四五六七八九十百千萬]+\\. (.+)"_s;
const QString tableLine = u"\\|.*"_s;
const QString heading = u"(#{1,6}) (.*)"_s;
const QString rule = u"---|\\*\\*\\*|___"_s;
const QString fence = u"```(.*)"_s;

class PlainReader {
public:
    explicit PlainReader(const QString &text) : m_lines(text.split(u'\n')) {}

    QList<MarkdownBlock> read() {
        while (!m_lines.isEmpty()) {
            const QString line = trimmed(m_lines.first());
            if (!readBlock(line) && !line.isEmpty())
                m_pending.append(line);
            else
                flush();
            m_blocks += std::exchange(m_found, {});
            if (!std::exchange(m_hasTaken, false))
                m_lines.removeFirst();
        }
        flush();
        return m_blocks;
    }

private:
    bool readBlock(const QString &line) {
        if (is(line, fence))
            m_found.append(readFence(trimmed(match(line, fence).captured(1))));
        else if (is(line, rule))
            m_found.append(block::Rule{});
        else if (const auto found = match(line, heading); found.hasMatch())
            m_found.append(
                block::Heading{static_cast<int>(found.capturedLength(1)), trimmed(found.captured(2))});
        else if (is(line, quote))
            m_found.append(block::Quote{take(quote)});
        else if (is(line, bullet))
            m_found.append(block::Bullet{take(bullet)});
        else if (is(line, numbered))
            m_found.append(block::Numbered{take(numbered)});
        else if (is(line, tableLine))
            m_found.append(readTable());
        return !m_found.isEmpty();
    }

    MarkdownBlock readFence(const QString &info) {
        m_hasTaken = true;
        m_lines.removeFirst();
        QStringList body;
        while (!m_lines.isEmpty() && !is(trimmed(m_lines.first()), fence))
            body.append(m_lines.takeFirst());
        if (!m_lines.isEmpty())
            m_lines.removeFirst();
        return directive(info, body.join(u'\n'));
    }

    MarkdownBlock readTable() {
        m_hasTaken = true;
        block::Table table{cells(trimmed(m_lines.takeFirst())), {}};
        while (!m_lines.isEmpty() && is(trimmed(m_lines.first()), tableLine)) {
            const QStringList row = cells(trimmed(m_lines.takeFirst()));
            if (!isSeparator(row))
                table.rows.append(row);
        }
        return table;
    }

    QStringList take(const QString &pattern) {
        m_hasTaken = true;
        QStringList items;
        while (!m_lines.isEmpty() && is(trimmed(m_lines.first()), pattern))
            items.append(trimmed(match(trimmed(m_lines.takeFirst()), pattern).captured(1)));
        return items;
    }

    void flush() {
        if (!m_pending.isEmpty())
            m_blocks.append(block::Paragraph{m_pending});
        m_pending.clear();
    }

    QStringList m_lines;
    QStringList m_pending;
    QList<MarkdownBlock> m_blocks;
    QList<MarkdownBlock> m_found;
    bool m_hasTaken = false; ///< the lines of the block are gone already
};

} // namespace

QList<MarkdownBlock> plainBlocksOf(const QString &text) {
    return PlainReader(text).read();
}

QString plainlyHiddenPage(const QString &text) {
    QStringList shown;
    for (const QString &line : text.split(u'\n')) {
        if (trimmed(line).startsWith(u"```page"_s))
            return shown.join(u'\n');
        shown.append(line);
    }
    return text;
}
