#include "client/LineReader.h"

#include <algorithm>

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
    const auto isEnd = [](char byte) { return byte == '\n' || byte == '\r'; };
    const auto end = std::find_if(m_bytes.cbegin() + m_searched, m_bytes.cend(), isEnd);
    m_searched = end - m_bytes.cbegin();
    if (end == m_bytes.cend())
        return std::nullopt;
    const QByteArrayView line(m_bytes.constData() + m_start, m_searched - m_start);
    m_skipLineFeed = *end == '\r';
    m_start = ++m_searched;
    return line;
}

std::optional<QByteArrayView> LineReader::rest() const {
    QByteArrayView rest(m_bytes.constData() + m_start, m_bytes.size() - m_start);
    if (m_skipLineFeed && rest.startsWith('\n'))
        rest = rest.sliced(1);
    if (rest.isEmpty())
        return std::nullopt;
    return rest;
}
