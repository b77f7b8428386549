#include "platform/Processes.h"

#include "platform/linux/ProcessLink.h"

#include <QDir>
#include <QFile>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Whether the process belongs to the person whose process this is.
bool isOurs(const QString &processFolder) {
    struct stat status {};
    return ::stat(QFile::encodeName(processFolder).constData(), &status) == 0 && status.st_uid == ::geteuid();
}

} // namespace

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

bool anotherInstanceRuns() {
    const QString executable = withoutDeletedMark(processPath(::getpid()));
    const QDir processes(u"/proc"_s);
    for (const QString &name : processes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        const qint64 process = name.toLongLong(&isNumber);
        if (isNumber && process != ::getpid() && withoutDeletedMark(processPath(process)) == executable &&
            isOurs(processes.filePath(name)))
            return true;
    }
    return false;
}
