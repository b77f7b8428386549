#pragma once

#include <QWidget>

class AppState;
class ChatScreen;
class Clock;
class Look;
class QSplitter;
class RenameSheet;
class SidebarView;

/// The sidebar and the chat beside it, with an edge between them that can be moved. The sidebar keeps its
/// width from one start to the next; neither can be pushed away.
class ChatView : public QWidget {
    Q_OBJECT

public:
    /// All three must outlive this object.
    ChatView(AppState &app, const Look &look, Clock &clock, QWidget *parent = nullptr);

    ChatScreen *screen() const { return m_screen; }
    SidebarView *sidebar() const { return m_sidebar; }

Q_SIGNALS:
    void settingsRequested();

protected:
    void hideEvent(QHideEvent *event) override;

private:
    QSplitter *m_columns;
    SidebarView *m_sidebar;
    ChatScreen *m_screen;
    RenameSheet *m_rename;
};
