#pragma once

#include "platform/TaskHandle.h"
#include "screens/BorderlessButton.h"
#include "screens/Glide.h"

class Clock;

/// What can be done with a reply. The line keeps its place and its height; its buttons show while somebody
/// attends to the reply, and for a second after that.
class ActionLine : public QWidget {
    Q_OBJECT

public:
    /// `look` and `clock` must outlive this object.
    ActionLine(const Look &look, Clock &clock, QWidget *parent = nullptr);

    /// Whether there is a finished reply to do something with.
    void setOffered(bool isOffered);
    void setCanRegenerate(bool canRegenerate);

    /// Whether the pointer is over the reply, or the keyboard's focus in it.
    void setAttended(bool isAttended);

    /// True while the buttons show and can be clicked.
    bool areActionsVisible() const { return m_actionsVisible; }

    /// The buttons that are there, in order.
    QList<LookButton *> buttons() const;

Q_SIGNALS:
    void copyRequested();
    void regenerateRequested();
    /// The focus has come to one of the buttons, or gone.
    void focusChanged();

private:
#ifndef Q_MOC_RUN
    Task<> hideLater(std::stop_token stop);
#endif
    void showNow();
    void fadeTo(double opacity, std::chrono::milliseconds time);

    const Look &m_look;
    Clock &m_clock;
    BorderlessButton *m_copy;
    BorderlessButton *m_regenerate;
    Glide m_opacity;
    bool m_isOffered = false;
    bool m_isAttended = false;
    bool m_actionsVisible = false;
    TaskHandle m_hideTask;
};
