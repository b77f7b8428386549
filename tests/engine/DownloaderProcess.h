#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <sys/types.h>

/// A process of the test's own that downloads, to be killed or put where a file system or a network is
/// missing. Started by posix_spawn, since the vfork() of QProcess leads the thread sanitizer astray for all
/// tests that follow.
class DownloaderProcess {
public:
    /// Starts engine_downloader with these arguments.
    explicit DownloaderProcess(const QByteArrayList &arguments);

    /// Starts a shell's command line in which $0 stands for engine_downloader and $1... for `arguments`, as
    /// root of a space of its own, whose kind is one of unshare's options, such as "--mount".
    DownloaderProcess(const QByteArray &space, const QByteArray &command, const QByteArrayList &arguments);

    ~DownloaderProcess();
    DownloaderProcess(const DownloaderProcess &) = delete;
    DownloaderProcess &operator=(const DownloaderProcess &) = delete;

    /// True where this system lets a test make such a space and run `command` in it.
    static bool canMake(const QByteArray &space, const QByteArray &command);

    /// Kills it, and waits until it is gone. False if it had ended by itself.
    bool kill();

    /// Waits for its end and gives the lines that it has printed.
    QByteArrayList output();

    bool hasSucceeded() const { return m_status == 0; }

private:
    void start(const QByteArrayList &arguments);
    void wait();

    pid_t m_process = -1;
    int m_output = -1;
    int m_status = -1;
};
