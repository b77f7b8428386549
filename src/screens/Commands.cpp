#include "screens/Commands.h"

#include <QAction>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

QAction *closeActionOf(QWidget &window) {
    auto *close = new QAction(u"Close Window"_s, &window);
    close->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
    QObject::connect(close, &QAction::triggered, &window, &QWidget::close);
    return close;
}

} // namespace

Commands::Commands(QObject *parent)
    : QObject(parent),
      m_newChat(make(u"New Chat"_s, Qt::CTRL | Qt::Key_N)),
      m_schedules(make(u"Scheduled Runs…"_s, Qt::CTRL | Qt::SHIFT | Qt::Key_S)),
      m_pages(make(u"Pages…"_s, Qt::CTRL | Qt::SHIFT | Qt::Key_P)),
      m_settings(make(u"Settings…"_s, Qt::CTRL | Qt::Key_Comma)),
      m_quit(make(u"Quit"_s, Qt::CTRL | Qt::Key_Q)) {
    m_settings->setMenuRole(QAction::PreferencesRole);
    m_quit->setMenuRole(QAction::QuitRole);
}

void Commands::fill(QMenu &menu, QWidget &window) {
    menu.addAction(m_newChat);
    menu.addSeparator();
    menu.addActions({m_schedules, m_pages});
    menu.addSeparator();
    menu.addAction(m_settings);
    menu.addSeparator();
    menu.addActions({closeActionOf(window), m_quit});
}

void Commands::equip(QWidget &window) {
    window.addActions({m_newChat, m_schedules, m_pages, m_settings, closeActionOf(window), m_quit});
}

QAction *Commands::make(const QString &text, const QKeySequence &keys) {
    auto *action = new QAction(text, this);
    action->setShortcut(keys);
    return action;
}
