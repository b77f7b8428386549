#pragma once

#include <QString>
#include <QStringList>

#include <deque>
#include <mutex>

/// The last 500 lines of a log, each cut to its first 2,000 characters. Any thread.
class RingBuffer {
public:
    static constexpr qsizetype capacity = 500;
    static constexpr qsizetype longestLine = 2000;

    void append(const QString &line);

    /// A copy of the kept lines, oldest first.
    QStringList snapshot() const;

private:
    mutable std::mutex m_lock;
    std::deque<QString> m_lines;
};
