#include "pages/PlainDialect.h"

#include "pages/Described.h"

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

QString list(const QStringList &items) {
    QStringList each;
    for (const QString &item : items)
        each.append(quoted(item));
    return listed(each);
}

/// The two sides of the first mark; nothing on the right without one.
std::pair<QString, QString> cut(const QString &line, QChar mark) {
    return {trimmed(line.section(mark, 0, 0)), trimmed(line.section(mark, 1))};
}

QList<std::pair<QString, QString>> labelledValues(const QString &body) {
    QList<std::pair<QString, QString>> rows;
    for (const QString &line : plainLines(body)) {
        if (line.contains(u':') && !cut(line, u':').first.isEmpty())
            rows.append(cut(line, u':'));
    }
    return rows;
}

QString values(const QString &body) {
    QStringList rows;
    for (const auto &[label, value] : labelledValues(body))
        rows.append(paired(label, value));
    return listed(rows);
}

double number(QString text) {
    const QByteArray bytes = trimmed(text.remove(u'%').remove(u'$').remove(u',')).toUtf8();
    char *end = nullptr;
    const double value = std::strtod(bytes.constData(), &end);
    return bytes.isEmpty() || end != bytes.constData() + bytes.size() ? 1.0 : value;
}

QString numbers(const QString &body) {
    QStringList rows;
    for (const auto &[label, value] : labelledValues(body))
        rows.append(numbered(label, number(value)));
    return listed(rows);
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

QString pairs(const QString &body) {
    QStringList rows;
    for (const QString &line : plainLines(body)) {
        const auto [left, right] = cut(line, u'|');
        if (!left.isEmpty())
            rows.append(paired(left, right));
    }
    return listed(rows);
}

QString directive(const QString &info, const QString &body) {
    const QString name = trimmed(info.section(u':', 0, 0)).toLower();
    const QString color = u' ' + trimmed(info.section(u':', 1)).toLower();
    if (name == u"metric"_s)
        return u"metric "_s + values(body) + color;
    if (name == u"chart"_s || name == u"line"_s || name == u"donut"_s || name == u"progress"_s)
        return name + u' ' + numbers(body) + color;
    if (name == u"callout"_s)
        return u"callout "_s + quoted(body.trimmed()) + color;
    if (name == u"timeline"_s)
        return u"timeline "_s + list(plainLines(body)) + color;
    if (name == u"sources"_s)
        return u"sources "_s + list(plainLines(body));
    if (name == u"flow"_s)
        return u"flow "_s + list(flowSteps(body)) + color;
    if (name == u"compare"_s || name == u"cards"_s)
        return name + u' ' + pairs(body) + color;
    if (name == u"spec"_s)
        return u"spec "_s + pairs(body);
    if (name == u"subtitle"_s)
        return u"subtitle "_s + quoted(body.trimmed());
    if (name == u"divider"_s)
        return u"divider"_s + color;
    return u"code "_s + quoted(info) + u' ' + quoted(body);
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
const QString quoteLine = u">(.*)"_s;
const QString bulletLine = u"[-*+] (.*)"_s;
const QString numberedLine = u"[\\p{N}一二三四五六七八九十百千萬]+\\. (.+)"_s;
const QString tableLine = u"\\|.*"_s;
const QString heading = u"(#{1,6}) (.*)"_s;
const QString rule = u"---|\\*\\*\\*|___"_s;
const QString fence = u"```(.*)"_s;

class PlainReader {
public:
    explicit PlainReader(const QString &text) : m_lines(text.split(u'\n')) {}

    QString read() {
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
        return m_blocks.join(u'\n');
    }

private:
    bool readBlock(const QString &line) {
        if (is(line, fence))
            m_found.append(readFence(trimmed(match(line, fence).captured(1))));
        else if (is(line, rule))
            m_found.append(u"rule"_s);
        else if (const auto found = match(line, heading); found.hasMatch())
            m_found.append(u"heading %1 "_s.arg(found.capturedLength(1)) +
                           quoted(trimmed(found.captured(2))));
        else if (is(line, quoteLine))
            m_found.append(u"quote "_s + list(take(quoteLine)));
        else if (is(line, bulletLine))
            m_found.append(u"bullet "_s + list(take(bulletLine)));
        else if (is(line, numberedLine))
            m_found.append(u"numbered "_s + list(take(numberedLine)));
        else if (is(line, tableLine))
            m_found.append(readTable());
        return !m_found.isEmpty();
    }

    QString readFence(const QString &info) {
        m_hasTaken = true;
        m_lines.removeFirst();
        QStringList body;
        while (!m_lines.isEmpty() && !is(trimmed(m_lines.first()), fence))
            body.append(m_lines.takeFirst());
        if (!m_lines.isEmpty())
            m_lines.removeFirst();
        return directive(info, body.join(u'\n'));
    }

    QString readTable() {
        m_hasTaken = true;
        QString table = u"table "_s + list(cells(trimmed(m_lines.takeFirst())));
        while (!m_lines.isEmpty() && is(trimmed(m_lines.first()), tableLine)) {
            const QStringList row = cells(trimmed(m_lines.takeFirst()));
            if (!isSeparator(row))
                table += u" / "_s + list(row);
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
            m_blocks.append(u"paragraph "_s + list(m_pending));
        m_pending.clear();
    }

    QStringList m_lines;
    QStringList m_pending;
    QStringList m_blocks;
    QStringList m_found;
    bool m_hasTaken = false; ///< the lines of the block are gone already
};

} // namespace

QString plainlyDescribed(const QString &text) {
    return PlainReader(text).read();
}
