#pragma once

#include <QWidget>

class AppState;
class ChatView;
class Clock;
class Look;
class OnboardingView;
class QStackedLayout;

/// What the main window shows: the chat when the program is ready, the onboarding screen otherwise. The
/// program's start begins once this has been painted, so that a person sees a window first.
class RootView : public QWidget {
    Q_OBJECT

public:
    /// All three must outlive this object.
    RootView(AppState &app, const Look &look, Clock &clock, QWidget *parent = nullptr);

    /// The sidebar and the chat; nothing before the program was ready for the first time.
    ChatView *chatView() const { return m_chat; }

Q_SIGNALS:
    /// The window stands on the screen for the first time.
    void appeared();
    void settingsRequested();
    void pagesRequested();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void showPhase();

    AppState &m_app;
    const Look &m_look;
    Clock &m_clock;
    QStackedLayout *m_stack;
    OnboardingView *m_onboarding;
    ChatView *m_chat = nullptr;
    bool m_hasAppeared = false;
};
