#pragma once

#include <QWidget>

class AppState;
class Look;
class MemoryForm;
class PaneList;
class QStackedLayout;
class Sheet;

/// The settings: the list of panes on the left, the chosen pane on the right. Every control writes at once.
class SettingsView : public QWidget {
    Q_OBJECT

public:
    /// Both must outlive this object.
    SettingsView(AppState &app, const Look &look, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The person wants to see the window of scheduled runs.
    void schedulesRequested();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void addPanes();
    Sheet *makeConfirmation();

    AppState &m_app;
    const Look &m_look;
    PaneList *m_list;
    QStackedLayout *m_panes;
    MemoryForm *m_memoryForm;
    Sheet *m_confirmErase;
};
