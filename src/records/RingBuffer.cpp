#include "records/RingBuffer.h"

#include "records/Characters.h"

void RingBuffer::append(const QString &line) {
    const QStringView cut = firstCharacters(line, longestLine);
    QString kept = cut.size() == line.size() ? line : cut.toString();
    const std::scoped_lock locked(m_lock);
    m_lines.push_back(std::move(kept));
    while (m_lines.size() > capacity)
        m_lines.pop_front();
}

QStringList RingBuffer::snapshot() const {
    const std::scoped_lock locked(m_lock);
    return {m_lines.begin(), m_lines.end()};
}
