#pragma once

#include <QByteArray>
#include <QSet>
#include <QStringList>

#include <mutex>
#include <thread>

/// Watches the internet sockets of another process, a few hundred times a second, and remembers with whom it
/// had to do. Any thread.
class ConnectionWatch {
public:
    explicit ConnectionWatch(qint64 processIdentifier);

    /// Both ends of each connection seen so far, such as "tcp 127.0.0.1:40000 127.0.0.1:8080"; sockets that
    /// only listen are left out. Those of IPv6 are in the digits of the kernel.
    QStringList seen() const;

    /// Those of them that have neither this port of the loopback on either side.
    QStringList besides(const QList<quint16> &ports) const;

private:
    void look();

    const qint64 m_process;
    mutable std::mutex m_lock;
    QSet<QString> m_seen;
    std::jthread m_thread;
};
