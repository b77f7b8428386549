#pragma once

#include "core/AppState.h"
#include "screens/MainWindow.h"
#include "support/TemporaryApplicationFolder.h"

/// The whole program in this process, window included, on an engine that is given to it.
class RunningProgram {
public:
    /// Prepares a new application folder with `model` installed, a file of no bytes in its place: the
    /// engine is another one. Nothing is shown yet.
    explicit RunningProgram(const InstalledModel &model);

    /// Turns to the engine at that address; the first call shows the window and starts the program.
    /// Throws std::runtime_error if the chat isn't ready soon.
    void use(const QUrl &engine, const QString &key);

    void setVisible(bool isVisible);

    /// Asks in a new chat and waits for the reply; gives the seconds from the question to the reply's end.
    double secondsOfReply(const QString &question);

    /// The last reply.
    QString reply();

private:
    TemporaryApplicationFolder m_folder;
    AppState m_app;
    MainWindow m_window;
    bool m_hasStarted = false;
};
