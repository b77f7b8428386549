#pragma once

#include "platform/TaskHandle.h"
#include "screens/SidebarModel.h"

#include <QWidget>

class AppState;
class ChatList;
class Clock;
class Label;
class Look;
class RangeMenu;
class SwitchRow;

/// The column beside the chat: a new chat, the settings, the saved chats of a range of days, and the
/// switch that cuts the program off from the web.
class SidebarView : public QWidget {
    Q_OBJECT

public:
    /// All three must outlive this object.
    SidebarView(AppState &app, const Look &look, Clock &clock, QWidget *parent = nullptr);

    /// Shows that state.
    void setModel(const SidebarModel &model);

    /// Lists the chats of that range.
    void setRange(SessionRange range);

Q_SIGNALS:
    void settingsRequested();
    /// The person has begun a chat, or opened one.
    void chatOpened();
    void renameRequested(const ConversationSummary &chat);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QLayout *makeToolbar();
    void build();
    void observe();
    void refresh();
    void followConversation();
    void open(const QUuid &id);
    void setOffline(bool isOffline);
#ifndef Q_MOC_RUN
    Task<> followDays(std::stop_token stop);
#endif

    AppState &m_app;
    const Look &m_look;
    Clock &m_clock;
    SessionRange m_range = SessionRange::all;
    QUuid m_openID;
    RangeMenu *m_rangeMenu;
    ChatList *m_list;
    Label *m_emptyText;
    QWidget *m_searchRow;
    SwitchRow *m_offline;
    Label *m_searchRemark;
    TaskHandle m_days;
};
