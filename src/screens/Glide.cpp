#include "screens/Glide.h"

Glide::Glide(std::chrono::milliseconds duration, const QEasingCurve &curve, QObject *parent)
    : QObject(parent) {
    m_animation.setDuration(int(duration.count()));
    m_animation.setEasingCurve(curve);
    connect(&m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        // Setting its ends makes an animation tell a value too.
        if (!isUnderWay())
            return;
        m_value = value.toDouble();
        Q_EMIT moved();
    });
    connect(&m_animation, &QVariantAnimation::finished, this, &Glide::arrived);
}

void Glide::go(double from, double to, Motion motion) {
    m_animation.stop();
    m_value = from;
    if (motion == Motion::reduced) {
        m_value = to;
        Q_EMIT moved();
        Q_EMIT arrived();
        return;
    }
    m_animation.setStartValue(from);
    m_animation.setEndValue(to);
    m_animation.start();
}
