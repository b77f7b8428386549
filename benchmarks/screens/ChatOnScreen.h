#pragma once

#include "core/AppState.h"
#include "engine/EngineProcessBox.h"
#include "platform/Clock.h"
#include "screens/ChatScreen.h"
#include "screens/Look.h"
#include "screens/MessageList.h"

/// The chat's screen in a window, fed by hand with the state that a running program would publish.
class ChatOnScreen : public QObject {
public:
    ChatOnScreen()
        : m_app(EngineProcessBox::shared(), Clock::system()),
          m_screen(m_app, m_look, Clock::system()) {
        // Without motion, all that an update paints is painted at once.
        m_look.setMotion(Motion::reduced);
        m_look.applyToApplication();
        m_screen.resize(1100, 760);
        m_screen.show();
        QCoreApplication::instance()->installEventFilter(this);
        QCoreApplication::processEvents();
    }

    /// Shows the state and paints it. False if nothing had to be painted.
    bool show(const ChatScreenState &state) {
        m_hasPainted = false;
        m_screen.setModel(chatScreenModel(state));
        QCoreApplication::processEvents();
        return m_hasPainted;
    }

    /// Moves the messages by a page, up if `pages` is negative, and paints them. False at the end of them.
    bool scroll(int pages) {
        m_hasPainted = false;
        m_screen.findChild<MessageList *>()->movePages(pages);
        QCoreApplication::processEvents();
        return m_hasPainted;
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        m_hasPainted = m_hasPainted || event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

private:
    AppState m_app;
    Look m_look;
    ChatScreen m_screen;
    bool m_hasPainted = false;
};
