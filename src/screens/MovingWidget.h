#pragma once

#include "screens/Style.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

class Look;

/// A widget that draws itself anew while something in it moves. It costs nothing while nothing moves,
/// while it can't be seen, and where motion is reduced.
class MovingWidget : public QWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit MovingWidget(const Look &look, QWidget *parent = nullptr);

    /// True while pictures follow each other.
    bool isMoving() const { return m_ticker.isActive(); }

protected:
    const Look &look() const { return m_look; }

    /// Tells whether there is anything to move.
    void setHasMotion(bool hasMotion);

    /// The time since the motion began; 0 while nothing moves.
    std::chrono::milliseconds motionTime() const;

    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void updateTicker();

    const Look &m_look;
    bool m_hasMotion = false;
    QBasicTimer m_ticker;
    QElapsedTimer m_time;
};
