#pragma once

#include <QObject>
#include <QTimer>

class QTextEdit;

/// Sits inside any Qt Widgets program, as a plugin that the program knows nothing of, and writes to the
/// standard output what an onlooker would note:
///
///     painted <nanoseconds>    the first window has been painted, at that time of the steady clock
///     sent                     the last message has been sent
///     ready                    the program's engine is ready, as a tip in the window says
///
/// Its orders: "quit" ends the program once it has painted; "send=<count>" types that many messages
/// into the first text field, each as soon as the one before has been taken; "ready" waits for the engine;
/// "stay" does nothing.
class Driver : public QObject {
    Q_OBJECT

public:
    explicit Driver(const QString &orders);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void painted();
    void type();
    void look();
    static QTextEdit *field();

    const QString m_orders;
    bool m_hasPainted = false;
    int m_toSend = 0;
    QTimer m_typing;
    QTimer m_looking;
};
