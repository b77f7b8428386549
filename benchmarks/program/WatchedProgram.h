#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <chrono>

/// A program that runs as a process of its own, on no screen, with the driver inside, and is looked at
/// from outside. Any failure to start or to get on is thrown as std::runtime_error.
class WatchedProgram {
public:
    /// Starts it, where it finds neither another program of its kind nor the network. `orders` are for the
    /// driver; `environment` is added to this process's.
    WatchedProgram(const QString &path, const QString &orders,
                   const QList<std::pair<QString, QString>> &environment = {});
    ~WatchedProgram();
    WatchedProgram(const WatchedProgram &) = delete;
    WatchedProgram &operator=(const WatchedProgram &) = delete;

    qint64 id() const { return m_process.processId(); }

    /// Waits for a line of the driver's that begins with `word`, and gives the rest of it.
    QByteArray waitFor(const QByteArray &word);

    /// Waits for the first painted window, and gives the seconds from the start to that.
    double secondsToPaint();

    /// Waits for the program's end.
    void waitForEnd();

    /// The processor time of all its threads since its start, in seconds. Its children don't count.
    double processorSeconds() const;

    /// The memory that it has in use now, in bytes, shared libraries included.
    double residentBytes() const;

private:
    QTemporaryDir m_runtimeFolder;
    std::chrono::nanoseconds m_start;
    QProcess m_process;
};
