#include "screens/MainWindow.h"

#include "core/AppState.h"
#include "screens/ApplicationIcon.h"
#include "screens/Front.h"
#include "screens/PageListView.h"
#include "screens/Placement.h"
#include "screens/RootView.h"
#include "screens/ScheduleListView.h"
#include "screens/SettingsView.h"
#include "screens/SideWindow.h"
#include "screens/Style.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>

using namespace Qt::StringLiterals;

MainWindow::MainWindow(AppState &app, Clock &clock) : m_app(app), m_clock(clock) {
    // The settings are read here already, so that the first picture has the person's own colours.
    m_look.follow(loadSettings());
    setWindowTitle(u"Ostrelin"_s);
    setWindowIcon(applicationIcon());
    auto *root = new RootView(app, m_look, clock);
    setCentralWidget(root);
    m_commands.fill(*menuBar()->addMenu(u"&File"_s), *this);
    connectCommands();
    addWindows();
    takeLook();
    if (!restoreGeometry(loadWindowGeometry()))
        resize(style::windowWidth, style::windowHeight);

    connect(&m_look, &Look::changed, this, &MainWindow::takeLook);
    connect(&app, &AppState::settingsChanged, this, &MainWindow::followSettings);
    connect(&app, &AppState::phaseChanged, this, &MainWindow::followPhase);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, &MainWindow::followApplication);
    connect(root, &RootView::settingsRequested, m_commands.settings(), &QAction::trigger);
    connect(root, &RootView::pagesRequested, m_commands.pages(), &QAction::trigger);
    connect(root, &RootView::appeared, &m_reducedMotion, &ReducedMotion::watch);
    connect(&m_reducedMotion, &ReducedMotion::isOnChanged, this,
            [this] { m_look.setMotion(m_reducedMotion.isOn() ? Motion::reduced : Motion::full); });
    followPhase();
}

void MainWindow::comeToFront(const QString &activationToken) {
    bringToFront(*this, activationToken);
}

void MainWindow::closeEvent(QCloseEvent *event) {
    saveWindowGeometry(saveGeometry());
    QMainWindow::closeEvent(event);
}

void MainWindow::connectCommands() {
    const auto opens = [this](QAction *command, QStringView id) {
        connect(command, &QAction::triggered, this, [this, id] { m_windows.open(id); });
    };
    opens(m_commands.schedules(), windowid::schedules);
    opens(m_commands.pages(), windowid::pages);
    opens(m_commands.settings(), windowid::settings);
    connect(m_commands.newChat(), &QAction::triggered, this, &MainWindow::startNewChat);
    connect(m_commands.quit(), &QAction::triggered, qApp, &QApplication::quit);
}

void MainWindow::addWindows() {
    m_windows.add(windowid::schedules, [this] {
        return sideWindow(u"Scheduled Runs"_s, new ScheduleListView(m_app, m_look, m_clock),
                          {style::schedulesWidth, style::schedulesHeight});
    });
    m_windows.add(windowid::pages, [this] {
        auto *pages = new PageListView(m_look);
        // What was deleted with everything isn't to be read on here.
        connect(&m_app, &AppState::phaseChanged, pages, [this, pages] {
            if (isIn<phase::NeedsInitialization>(m_app.phase()))
                pages->beginAnew();
        });
        return sideWindow(u"Pages"_s, pages, {style::pagesWidth, style::pagesHeight});
    });
    m_windows.add(windowid::settings, [this] {
        auto *settings = new SettingsView(m_app, m_look);
        connect(settings, &SettingsView::schedulesRequested, m_commands.schedules(), &QAction::trigger);
        auto window = sideWindow(u"Settings"_s, settings, {style::settingsWidth, style::settingsHeight});
        window->setFixedSize(window->size());
        return window;
    });
}

std::unique_ptr<QWidget> MainWindow::sideWindow(const QString &title, QWidget *content, const QSize &size) {
    auto window = std::make_unique<SideWindow>(m_look, title, content);
    window->resize(size);
    m_commands.equip(*window);
    return window;
}

void MainWindow::startNewChat() {
    m_app.chat().newChat();
    // The wish may come from a window beside this one.
    if (!isActiveWindow())
        comeToFront();
}

void MainWindow::takeLook() {
    m_look.applyToApplication();
    menuBar()->setFont(m_look.font(TextStyle::control));
}

void MainWindow::followSettings() {
    m_look.follow(m_app.settings());
}

void MainWindow::followApplication(Qt::ApplicationState state) {
    // The person may come from another program, in which the memory file was changed.
    if (state == Qt::ApplicationActive)
        m_app.refreshMemory();
}

void MainWindow::followPhase() {
    m_commands.newChat()->setEnabled(isIn<phase::Ready>(m_app.phase()));
}
