#include "screens/RootView.h"

#include "core/AppState.h"
#include "screens/ChatView.h"
#include "screens/Look.h"
#include "screens/OnboardingView.h"
#include "screens/Style.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStackedLayout>
#include <QTimer>

RootView::RootView(AppState &app, const Look &look, Clock &clock, QWidget *parent)
    : QWidget(parent),
      m_app(app),
      m_look(look),
      m_clock(clock),
      m_stack(new QStackedLayout(this)),
      m_onboarding(new OnboardingView(app, look)) {
    m_stack->addWidget(m_onboarding);
    setMinimumSize(style::contentMinimumWidth, style::contentMinimumHeight);
    connect(&app, &AppState::phaseChanged, this, &RootView::showPhase);
    connect(this, &RootView::appeared, &app, &AppState::bootstrap, Qt::QueuedConnection);
    showPhase();
}

void RootView::paintEvent(QPaintEvent *event) {
    QPainter(this).fillRect(event->rect(), m_look.palette().background);
    if (!std::exchange(m_hasAppeared, true))
        // Once the event loop is back, the picture has reached the screen.
        QTimer::singleShot(0, this, &RootView::appeared);
}

void RootView::showPhase() {
    const bool isReady = isIn<phase::Ready>(m_app.phase());
    if (isReady && !m_chat) {
        m_chat = new ChatView(m_app, m_look, m_clock);
        connect(m_chat, &ChatView::settingsRequested, this, &RootView::settingsRequested);
        connect(m_chat, &ChatView::pagesRequested, this, &RootView::pagesRequested);
        m_stack->addWidget(m_chat);
    }
    m_stack->setCurrentWidget(isReady ? static_cast<QWidget *>(m_chat) : m_onboarding);
}
