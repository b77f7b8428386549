#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QVariantMap>

/// A desktop's service of notifications on a bus (Desktop Notifications Specification), which keeps what it
/// is given. It has to go before its bus does.
class NotificationService : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    enum class Manner { shows, waits, refuses };

    struct Shown {
        QString application;
        uint replaces;
        QString title;
        QString body;
        QVariantMap hints;
    };

    /// Takes its place on the bus at that address. Throws std::runtime_error.
    explicit NotificationService(const QString &bus, Manner manner = Manner::shows);
    ~NotificationService() override;

    const QList<Shown> &shown() const { return m_shown; }

public Q_SLOTS:
    uint Notify(const QString &application, uint replaces, const QString &icon, const QString &title,
                const QString &body, const QStringList &actions, const QVariantMap &hints, int timeout);

private:
    Manner m_manner;
    QDBusConnection m_bus;
    QList<Shown> m_shown;
};
