#pragma once

#include "platform/ReducedMotion.h"
#include "screens/Look.h"

#include <QMainWindow>

class AppState;
class Clock;
class RootView;

/// The program's main window, with its menu. It keeps the look of the whole application in step with
/// the settings and with the person's wish for less motion.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// Both must outlive this object.
    MainWindow(AppState &app, Clock &clock);

    const Look &look() const { return m_look; }

    /// Shows the window again where it was closed or minimised, and gives it the focus as far as the
    /// desktop lets it; `activationToken` as for bringToFront().
    void comeToFront(const QString &activationToken = {});

private:
    void buildMenu();
    void takeLook();
    void followSettings();
    void followPhase();

    AppState &m_app;
    Look m_look;
    ReducedMotion m_reducedMotion;
    QAction *m_newChat = nullptr;
};
