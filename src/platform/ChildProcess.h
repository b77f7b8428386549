#pragma once

#include <QByteArrayView>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <stdexcept>

/// Raised when the system refuses to start a program; what() is the system's own description.
class LaunchError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A program started as a child. It reads nothing, what it prints is taken by a thread of its own (so
/// it can't block, whatever it prints), and it dies with the thread that launched it.
class ChildProcess {
public:
    struct Launch {
        QString executable;
        QStringList arguments;
        QProcessEnvironment environment;
        /// Take what the child prints, in pieces of any size. Called on a background thread.
        std::function<void(QByteArrayView)> onOutput;
        std::function<void(QByteArrayView)> onError;
        /// Called once on a background thread, after the child has died and its output was taken.
        std::function<void()> onExit;
    };

    /// Starts the program. Throws LaunchError. Any thread; its end is also the child's end.
    explicit ChildProcess(Launch launch);

    /// Kills the child if it still runs, and waits for it.
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    /// All three from any thread, whether or not an event loop runs. A signal never reaches a process
    /// that has taken the id of a dead child.
    bool isRunning() const;
    void terminate();
    void kill();

    qint64 processIdentifier() const;

private:
    class Watch;
    std::unique_ptr<Watch> m_watch;
};
