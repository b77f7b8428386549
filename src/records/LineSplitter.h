#pragma once

#include <QByteArrayView>
#include <QString>

#include <mutex>
#include <optional>

class RingBuffer;

/// Turns a stream of byte chunks into lines. Any thread; no lock is held while a line is handed on.
class LineSplitter {
public:
    /// Takes a chunk, read as UTF-8 by itself with U+FFFD for what isn't, and appends every line that
    /// it completes to `target`, without the line feed. An unfinished last line waits for more.
    void feed(QByteArrayView chunk, RingBuffer &target);

private:
    void append(const QString &text);
    std::optional<QString> takeLine();

    std::mutex m_lock;
    QString m_leftover;
    qsizetype m_taken = 0; ///< how much of the leftover has been handed on as lines
};
