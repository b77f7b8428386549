#pragma once

#include "platform/ChildProcess.h"

#include <QString>

#include <memory>
#include <mutex>
#include <optional>

/// The hold on the engine's child process that everybody can reach: whoever ends the program ends the
/// child through it, from any thread and without an event loop.
class EngineProcessBox {
public:
    /// The one of this process, made with the first call.
    static EngineProcessBox &shared();

    /// Where the child's process id is kept for a later run to find; empty for nowhere. Set once,
    /// before anything else touches the engine.
    void setPidFile(const QString &path);

    /// Starts a child in the place of the one before; its exit is unexpected from now on. Throws
    /// LaunchError. The child before, long dead in the ordinary case, is released here. Main thread.
    void launch(ChildProcess::Launch launch);

    /// Writes the held child's id to the pid file, as decimal text. A failure is ignored.
    void writePidFile() const;

    /// True while there is a child and it runs.
    bool isRunning() const;

    /// True if the exit of the child, past or to come, is our own doing.
    bool expectsExit() const;

    /// Ends the child: SIGTERM, up to three seconds of waiting on the calling thread, SIGKILL. Then
    /// removes the pid file, also where there was no child, but not one that names a server of another
    /// program's. The child stays held.
    void terminate();

    /// Ends the server that an earlier run left behind, if the pid file names one that is still there:
    /// SIGTERM, 0.3 seconds on the calling thread, SIGKILL. A process that isn't a llama-server is never
    /// touched. The file is removed, unless it holds no number.
    void killStaleServer() const;

private:
    /// Nothing if there is no file, or no number in it.
    std::optional<qint32> processInPidFile() const;

    mutable std::mutex m_lock;
    std::shared_ptr<ChildProcess> m_process;
    bool m_expectingExit = false;
    QString m_pidFile;
};
