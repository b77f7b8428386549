#pragma once

#include "e2e/AccessibleWindow.h"

#include <QProcess>
#include <QTemporaryDir>

#include <memory>

/// The whole program as a process on the present display, with a home folder of its own; everything
/// else of its environment is this process's at the start. Whatever still runs dies with this object.
class RunningProgram {
public:
    explicit RunningProgram(const QString &executable);
    ~RunningProgram();
    RunningProgram(const RunningProgram &) = delete;
    RunningProgram &operator=(const RunningProgram &) = delete;

    /// Starts it, once more after an end. False if the system doesn't.
    bool start();

    /// Waits until the chat is there and the engine takes requests; false if that doesn't come about.
    bool waitUntilReady(int milliseconds = 30'000);

    /// Waits until no reply is being written.
    bool waitForReply(int milliseconds = 60'000);

    /// Its folder for what the desktop keeps.
    QString configurationFolder() const { return m_home.filePath(QStringLiteral("config")); }

    qint64 pid() const { return m_process.processId(); }

    /// The program's engine process; 0 if there is none.
    qint64 enginePid() const;

    /// Its window; only after start().
    AccessibleWindow &window() { return *m_window; }

    /// Sends a signal of signal(7).
    void signal(int number) const;

    /// Opens the menu of the list item of that name and chooses an entry of it, counted from 1. False if no
    /// such item shows.
    bool chooseFromMenu(const QString &name, int entry);

    /// Closes the window as a window manager does. False if there is no window.
    bool closeWindow() const;

    /// Waits for the program's end; true if it ended in time.
    bool waitForEnd(int milliseconds = 10'000);

    /// True if it ended by itself with status 0.
    bool endedOrderly() const;

    /// What it printed.
    QByteArray output() { return m_process.readAll(); }

private:
    QProcessEnvironment environment() const;

    QString m_executable;
    QTemporaryDir m_home;
    QProcess m_process;
    std::unique_ptr<AccessibleWindow> m_window;
};
