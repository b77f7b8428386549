#include "platform/Processes.h"

#include <QFile>

#include <csignal>

#include <unistd.h>

QString processPath(qint64 processIdentifier) {
    // Zero and negative numbers stand for process groups.
    if (processIdentifier <= 0)
        return {};
    char path[4096];
    const QByteArray link = "/proc/" + QByteArray::number(processIdentifier) + "/exe";
    const ssize_t length = ::readlink(link.constData(), path, sizeof path);
    return length < 0 ? QString() : QFile::decodeName(QByteArray(path, length));
}

void terminateProcess(qint64 processIdentifier) {
    if (processIdentifier > 0)
        ::kill(static_cast<pid_t>(processIdentifier), SIGTERM);
}

void killProcess(qint64 processIdentifier) {
    if (processIdentifier > 0)
        ::kill(static_cast<pid_t>(processIdentifier), SIGKILL);
}
