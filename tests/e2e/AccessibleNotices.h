#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>

/// The notices that a program gives to screen readers: what begins to show as a notification, by name, in the
/// order in which it comes. Listens from its construction on. Main thread.
class AccessibleNotices : public QObject {
    Q_OBJECT

public:
    /// The program's connection to the accessibility bus, and its name there.
    AccessibleNotices(const QDBusConnection &bus, const QString &service);

    /// Waits until that has been said.
    bool waitFor(const QString &notice, int milliseconds = 30'000);

private Q_SLOTS:
    void takeChange(const QDBusMessage &message);

private:
    QVariant ask(const QString &path, const QString &interface, const QString &method,
                 const QVariantList &arguments = {});

    QDBusConnection m_bus;
    const QString m_service;
    QStringList m_notices;
};
