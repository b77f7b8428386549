#pragma once

#include <QStringView>

/// How the page dialect looks at a text: line by line, as views into it.

/// True for a tab and for every horizontal space of Unicode (general category Zs), the non-breaking one
/// included. A line end is none.
inline bool isBlank(QChar character) {
    if (character.unicode() < 0x80)
        return character == u' ' || character == u'\t';
    return character.category() == QChar::Separator_Space;
}

/// `text` without the blanks at its ends. Line ends stay; QStringView::trimmed() takes those as well.
inline QStringView trimmedLine(QStringView text) {
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

/// True for a line that, trimmed, begins with three backticks.
inline bool isFence(QStringView trimmed) {
    return trimmed.size() >= 3 && trimmed[0] == u'`' && trimmed[1] == u'`' && trimmed[2] == u'`';
}

/// Goes through the lines of a text. Only a line feed ends a line, and the end of the text the last one,
/// so that an empty text has one empty line. The text must outlive the walk.
class LineWalk {
public:
    explicit LineWalk(QStringView text) : m_text(text) { look(); }

    /// Behind the last line; nothing but this and start() may then be asked.
    bool isAtEnd() const { return m_start > m_text.size(); }

    /// Where the present line begins.
    qsizetype start() const { return m_start; }

    /// The present line without the blanks at its ends.
    QStringView trimmed() const { return m_trimmed; }

    void advance() {
        m_start = m_end + 1;
        look();
    }

private:
    void look() {
        if (isAtEnd())
            return;
        const qsizetype lineFeed = m_text.indexOf(u'\n', m_start);
        m_end = lineFeed < 0 ? m_text.size() : lineFeed;
        m_trimmed = trimmedLine(m_text.sliced(m_start, m_end - m_start));
    }

    QStringView m_text;
    QStringView m_trimmed;
    qsizetype m_start = 0;
    qsizetype m_end = 0;
};
