#pragma once

#include "pages/drawing/Spoken.h"
#include "platform/TaskHandle.h"
#include "screens/Glide.h"

#include <QWidget>

class Clock;

/// A short notice that stands over its parent for 2.6 seconds and then goes by itself. A new one takes
/// the place of the one before and stands its full time. It takes neither clicks nor the focus.
class Toast : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// `look` and `clock` must outlive this object.
    Toast(const Look &look, Clock &clock, QWidget *parent);

    void showText(const QString &text);

    /// The notice on screen; empty while there is none.
    const QString &text() const { return m_text; }

    /// The place of the notice: its middle, and its lower edge, in the parent's coordinates.
    void setAnchor(const QPoint &bottomCentre);

    QSize sizeHint() const override;
    QAccessible::Role spokenRole() const override { return QAccessible::Notification; }
    QString spokenName() const override { return m_text; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
#ifndef Q_MOC_RUN
    Task<> goLater(std::stop_token stop);
#endif
    void place();

    const Look &m_look;
    Clock &m_clock;
    QString m_text;
    QString m_shown; ///< stays to be seen while the notice fades
    QPoint m_bottomCentre;
    Glide m_opacity;
    TaskHandle m_toastTask;
};
