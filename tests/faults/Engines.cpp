#include "faults/Engines.h"

#include "e2e/ProcessStatus.h"
#include "platform/Processes.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

/// Whether the process was started with that application folder; false if it is gone.
bool hasDataHome(qint64 process, const QString &dataHome) {
    QFile file(u"/proc/%1/environ"_s.arg(process));
    return file.open(QIODevice::ReadOnly) &&
           file.readAll().split('\0').contains("XDG_DATA_HOME=" + QFile::encodeName(dataHome));
}

} // namespace

QList<RunningEngine> enginesOf(const QString &dataHome) {
    QList<RunningEngine> engines;
    for (const QString &name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        const qint64 process = name.toLongLong();
        if (processPath(process).contains(u"llama-server"_s) && hasDataHome(process, dataHome) &&
            isAlive(process))
            engines.append({process, parentOf(process)});
    }
    return engines;
}
