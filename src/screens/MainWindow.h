#pragma once

#include "platform/ReducedMotion.h"
#include "screens/Commands.h"
#include "screens/Look.h"
#include "screens/Windows.h"

#include <QMainWindow>

class AppState;
class Clock;
class RootView;

/// The program's main window, with its menu and the windows that the menu opens. It keeps the look of the
/// whole application in step with the settings and with the person's wish for less motion. Closing it
/// hides it: it can come back as long as another window is open, and the program ends with the last one.
/// It keeps its place and its size from one start to the next.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// Both must outlive this object.
    MainWindow(AppState &app, Clock &clock);

    const Look &look() const { return m_look; }
    Windows &windows() { return m_windows; }

    /// Shows the window again where it was closed or minimised, and gives it the focus as far as the
    /// desktop lets it; `activationToken` as for bringToFront().
    void comeToFront(const QString &activationToken = {});

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void connectCommands();
    void addWindows();
    std::unique_ptr<QWidget> sideWindow(const QString &title, QWidget *content, const QSize &size);
    void startNewChat();
    void takeLook();
    void followSettings();
    void followApplication(Qt::ApplicationState state);
    void followPhase();

    AppState &m_app;
    Clock &m_clock;
    Look m_look;
    ReducedMotion m_reducedMotion;
    Commands m_commands;
    Windows m_windows;
};
