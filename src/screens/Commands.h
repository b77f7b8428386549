#pragma once

#include <QList>
#include <QObject>

class QAction;
class QMenu;
class QWidget;

/// What the menu offers, in every window of the program: the same actions with the same keys. Whoever owns
/// this object connects them.
class Commands : public QObject {
    Q_OBJECT

public:
    explicit Commands(QObject *parent = nullptr);

    QAction *newChat() const { return m_newChat; }
    QAction *schedules() const { return m_schedules; }
    QAction *pages() const { return m_pages; }
    QAction *settings() const { return m_settings; }
    QAction *quit() const { return m_quit; }

    /// Fills a window's menu, whose last but one entry closes that window.
    void fill(QMenu &menu, QWidget &window);

    /// Gives a window without a menu the same keys.
    void equip(QWidget &window);

private:
    QAction *make(const QString &text, const QKeySequence &keys);

    QAction *m_newChat;
    QAction *m_schedules;
    QAction *m_pages;
    QAction *m_settings;
    QAction *m_quit;
};
