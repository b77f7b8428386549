#include "records/LineSplitter.h"

#include "records/Characters.h"
#include "records/RingBuffer.h"

void LineSplitter::feed(QByteArrayView chunk, RingBuffer &target) {
    append(QString::fromUtf8(chunk));
    while (const std::optional<QString> line = takeLine())
        target.append(*line);
}

void LineSplitter::append(const QString &text) {
    const std::scoped_lock locked(m_lock);
    m_leftover += text;
}

std::optional<QString> LineSplitter::takeLine() {
    // The buffer keeps no more of a line, so an engine that never ends one can't fill the memory.
    static constexpr qsizetype longestLeftover = 65536;
    const std::scoped_lock locked(m_lock);
    const qsizetype end = m_leftover.indexOf(u'\n', m_taken);
    if (end >= 0) {
        QString line = m_leftover.sliced(m_taken, end - m_taken);
        m_taken = end + 1;
        return line;
    }
    m_leftover.remove(0, m_taken);
    m_taken = 0;
    if (m_leftover.size() > longestLeftover)
        m_leftover.truncate(firstCharacters(m_leftover, RingBuffer::longestLine + 1).size());
    return std::nullopt;
}
