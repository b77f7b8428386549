#include "screens/MainWindow.h"

#include "core/AppState.h"
#include "screens/ChatScreen.h"
#include "screens/Front.h"
#include "screens/RootView.h"
#include "screens/Style.h"

#include <QApplication>
#include <QMenuBar>

using namespace Qt::StringLiterals;

MainWindow::MainWindow(AppState &app, Clock &clock) : m_app(app) {
    // The settings are read here already, so that the first picture has the person's own colours.
    m_look.follow(loadSettings());
    setWindowTitle(u"Ostrelin"_s);
    auto *root = new RootView(app, m_look, clock);
    setCentralWidget(root);
    buildMenu();
    takeLook();
    resize(style::windowWidth, style::windowHeight);

    connect(&m_look, &Look::changed, this, &MainWindow::takeLook);
    connect(&app, &AppState::settingsChanged, this, &MainWindow::followSettings);
    connect(&app, &AppState::phaseChanged, this, &MainWindow::followPhase);
    connect(root, &RootView::appeared, &m_reducedMotion, &ReducedMotion::watch);
    connect(&m_reducedMotion, &ReducedMotion::isOnChanged, this,
            [this] { m_look.setMotion(m_reducedMotion.isOn() ? Motion::reduced : Motion::full); });
    followPhase();
}

void MainWindow::comeToFront(const QString &activationToken) {
    bringToFront(*this, activationToken);
}

void MainWindow::buildMenu() {
    QMenu *file = menuBar()->addMenu(u"&File"_s);
    m_newChat = file->addAction(u"New Chat"_s, QKeySequence(Qt::CTRL | Qt::Key_N), &m_app.chat(),
                                &ChatController::newChat);
    file->addSeparator();
    QAction *quit = file->addAction(u"Quit"_s, QKeySequence(Qt::CTRL | Qt::Key_Q), qApp, &QApplication::quit);
    quit->setMenuRole(QAction::QuitRole);
}

void MainWindow::takeLook() {
    m_look.applyToApplication();
    menuBar()->setFont(m_look.font(TextStyle::control));
}

void MainWindow::followSettings() {
    m_look.follow(m_app.settings());
}

void MainWindow::followPhase() {
    m_newChat->setEnabled(std::holds_alternative<phase::Ready>(m_app.phase()));
}
