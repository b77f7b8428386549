#pragma once

#include <QWidget>

class AppState;
class ChatColumns;
class ChatScreen;
class Clock;
class Look;
class PagePanel;
class RenameSheet;
class SidebarView;

/// The sidebar and the chat beside it, and the panel of a page that the model has made. The sidebar keeps its
/// width from one start to the next.
class ChatView : public QWidget {
    Q_OBJECT

public:
    /// All three must outlive this object.
    ChatView(AppState &app, const Look &look, Clock &clock, QWidget *parent = nullptr);

    ChatScreen *screen() const { return m_screen; }
    SidebarView *sidebar() const { return m_sidebar; }

Q_SIGNALS:
    void settingsRequested();
    void pagesRequested();

protected:
    void hideEvent(QHideEvent *event) override;

private:
    void showPageDraft();
    void savePageDraft();

    AppState &m_app;
    SidebarView *m_sidebar;
    ChatScreen *m_screen;
    PagePanel *m_panel;
    ChatColumns *m_columns;
    RenameSheet *m_rename;
};
