#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QStringList>

/// A desktop's file manager on a bus (the File Manager DBus Interface of freedesktop.org), which keeps what
/// it is to show. It has to go before its bus does.
class FileManagerService : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    enum class Manner { shows, fails };

    /// Takes its place on the bus at that address. Throws std::runtime_error.
    explicit FileManagerService(const QString &bus, Manner manner = Manner::shows);
    ~FileManagerService() override;

    /// The addresses of each call, the first call first.
    const QList<QStringList> &shown() const { return m_shown; }

public Q_SLOTS:
    void ShowItems(const QStringList &addresses, const QString &startup);

private:
    Manner m_manner;
    QDBusConnection m_bus;
    QList<QStringList> m_shown;
};
