#include "screens/MovingWidget.h"

#include "screens/Look.h"

#include <QTimerEvent>

MovingWidget::MovingWidget(const Look &look, QWidget *parent) : QWidget(parent), m_look(look) {
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
    connect(&look, &Look::motionChanged, this, &MovingWidget::updateTicker);
}

void MovingWidget::setHasMotion(bool hasMotion) {
    m_hasMotion = hasMotion;
    updateTicker();
}

std::chrono::milliseconds MovingWidget::motionTime() const {
    return std::chrono::milliseconds(isMoving() ? m_time.elapsed() : 0);
}

void MovingWidget::showEvent(QShowEvent *event) {
    QWidget::showEvent(event);
    updateTicker();
}

void MovingWidget::hideEvent(QHideEvent *event) {
    QWidget::hideEvent(event);
    updateTicker();
}

void MovingWidget::timerEvent(QTimerEvent *event) {
    if (event->timerId() == m_ticker.timerId())
        update();
    else
        QWidget::timerEvent(event);
}

void MovingWidget::updateTicker() {
    const bool moves = m_hasMotion && isVisible() && m_look.motion() == Motion::full;
    if (moves == isMoving())
        return;
    if (moves) {
        m_time.start();
        m_ticker.start(int(style::frame.count()), Qt::PreciseTimer, this);
    } else {
        m_ticker.stop();
    }
    update();
}
