#pragma once

#include "screens/Look.h"

#include <QVariantAnimation>

#include <chrono>

/// A number on its way to another. Main thread only.
class Glide : public QObject {
    Q_OBJECT

public:
    /// `curve` is how it goes: fast at first and slow in the end, unless said otherwise.
    explicit Glide(std::chrono::milliseconds duration, const QEasingCurve &curve = QEasingCurve::OutCubic,
                   QObject *parent = nullptr);

    /// Sets out; a way that is under way ends where it is. With reduced motion it is there at once.
    void go(double from, double to, Motion motion);
    void stop() { m_animation.stop(); }

    /// How long the next way takes.
    void setDuration(std::chrono::milliseconds duration) { m_animation.setDuration(int(duration.count())); }

    bool isUnderWay() const { return m_animation.state() == QAbstractAnimation::Running; }

    /// Where it is, or where it ended.
    double value() const { return m_value; }

Q_SIGNALS:
    void moved();
    void arrived();

private:
    QVariantAnimation m_animation;
    double m_value = 0;
};
