#include "client/LineReader.h"

#include <utility>

void LineReader::feed(const QByteArray &piece) {
    m_bytes.remove(0, m_start);
    m_searched -= m_start;
    m_start = 0;
    m_bytes += piece;
}

std::optional<QByteArrayView> LineReader::next() {
    // The LF of a CR LF may come in a later piece than its CR.
    if (m_skipLineFeed && m_start < m_bytes.size()) {
        m_skipLineFeed = false;
        if (m_bytes.at(m_start) == '\n')
            m_searched = ++m_start;
    }
    m_searched = endOfLine();
    if (m_searched == m_bytes.size()) {
        if (m_searched - m_start > longestLine) {
            m_isTooLong = true;
            m_start = m_searched;
        }
        return std::nullopt;
    }
    const QByteArrayView line(m_bytes.constData() + m_start, m_searched - m_start);
    m_skipLineFeed = m_bytes.at(m_searched) == '\r';
    m_start = ++m_searched;
    if (std::exchange(m_isTooLong, false))
        return QByteArrayView();
    return line;
}

qsizetype LineReader::endOfLine() const {
    // Two searches of the library's, the second only within the line, are quicker than one of our own.
    const qsizetype lineFeed = m_bytes.indexOf('\n', m_searched);
    const qsizetype end = lineFeed < 0 ? m_bytes.size() : lineFeed;
    const qsizetype carriageReturn =
        QByteArrayView(m_bytes.constData() + m_searched, end - m_searched).indexOf('\r');
    return carriageReturn < 0 ? end : m_searched + carriageReturn;
}

std::optional<QByteArrayView> LineReader::rest() const {
    QByteArrayView rest(m_bytes.constData() + m_start, m_bytes.size() - m_start);
    if (m_skipLineFeed && rest.startsWith('\n'))
        rest = rest.sliced(1);
    if (rest.isEmpty() || m_isTooLong)
        return std::nullopt;
    return rest;
}
