#include "e2e/ConnectionWatch.h"

#include <QDir>
#include <QFile>
#include <QHostAddress>
#include <QtEndian>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// The inodes of the sockets that the process has open.
QSet<QByteArray> socketsOf(const QString &folder) {
    QSet<QByteArray> inodes;
    const QDir descriptors(folder + u"/fd"_s);
    for (const QString &name : descriptors.entryList(QDir::System | QDir::Files)) {
        // A link such as "socket:[4711]", which QFile takes for a path.
        const QByteArray target = QFile::symLinkTarget(descriptors.filePath(name)).toLatin1();
        const qsizetype start = target.indexOf("socket:[");
        if (start >= 0)
            inodes.insert(target.mid(start + 8).chopped(1));
    }
    return inodes;
}

/// An end of a connection as the tables of proc(5) have it: the address in hexadecimal, a word of the
/// machine for IPv4, and the port.
QString endOf(const QByteArray &text) {
    const QList<QByteArray> parts = text.split(':');
    const QString port = u':' + QString::number(parts.value(1).toUShort(nullptr, 16));
    if (parts.first().size() != 8)
        return QString::fromLatin1(parts.first()) + port;
    return QHostAddress(qFromBigEndian(parts.first().toUInt(nullptr, 16))).toString() + port;
}

/// What one of the tables tells of those sockets.
QStringList connectionsIn(const QString &folder, const QString &table, const QSet<QByteArray> &sockets) {
    QFile file(folder + u"/net/"_s + table);
    QStringList connections;
    if (!file.open(QIODevice::ReadOnly))
        return connections;
    enum Column { local = 1, remote = 2, state = 3, inode = 9 };
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> columns = line.simplified().split(' ');
        const bool isTcp = table.startsWith(u"tcp"_s);
        if (!sockets.contains(columns.value(inode)) || (isTcp && columns.at(state) == "0A"))
            continue;
        connections.append(table + u' ' + endOf(columns.at(local)) + u' ' + endOf(columns.at(remote)));
    }
    return connections;
}

} // namespace

ConnectionWatch::ConnectionWatch(qint64 processIdentifier)
    : m_process(processIdentifier),
      m_thread([this](const std::stop_token &stop) {
          for (; !stop.stop_requested(); std::this_thread::sleep_for(3ms))
              look();
      }) {}

void ConnectionWatch::look() {
    const QString folder = u"/proc/%1"_s.arg(m_process);
    const QSet<QByteArray> sockets = socketsOf(folder);
    for (const QString &table : {u"tcp"_s, u"tcp6"_s, u"udp"_s, u"udp6"_s}) {
        for (const QString &connection : connectionsIn(folder, table, sockets)) {
            const std::lock_guard guard(m_lock);
            m_seen.insert(connection);
        }
    }
}

QStringList ConnectionWatch::seen() const {
    const std::lock_guard guard(m_lock);
    return m_seen.values();
}

QStringList ConnectionWatch::besides(const QList<quint16> &ports) const {
    QStringList others = seen();
    others.removeIf([&ports](const QString &connection) {
        const QStringList ends = connection.split(u' ').sliced(1);
        return std::any_of(ports.begin(), ports.end(),
                           [&ends](quint16 port) { return ends.contains(u"127.0.0.1:%1"_s.arg(port)); });
    });
    return others;
}
