#pragma once

#include "pages/drawing/Spoken.h"

#include <QWidget>

/// Tells those who hear the screen of something that the others see happen by itself. Nothing of it is drawn,
/// and neither mouse nor keyboard come to it.
class SpokenNotice : public QWidget, public Spoken {
    Q_OBJECT

public:
    explicit SpokenNotice(QWidget *parent);

    /// Says it, also if it is what was said last. An empty one takes the last one away.
    void say(const QString &notice);

    QAccessible::Role spokenRole() const override { return QAccessible::Notification; }
    QString spokenName() const override { return m_notice; }

private:
    QString m_notice;
};
