#pragma once

#include <QByteArrayView>
#include <QString>

#include <mutex>

class RingBuffer;

/// Turns a stream of byte chunks into lines. Any thread; no lock is held while a line is handed on.
class LineSplitter {
public:
    /// Takes a chunk, read as UTF-8 by itself with U+FFFD for what isn't, and appends every line that
    /// it completes to `target`, without the line feed. An unfinished last line waits for more.
    void feed(QByteArrayView chunk, RingBuffer &target);

private:
    std::mutex m_lock;
    QString m_leftover;
};
