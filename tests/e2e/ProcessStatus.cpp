#include "e2e/ProcessStatus.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The fields of /proc/<pid>/stat after the name (proc(5)), from the state on; none if it is gone.
QList<QByteArray> statFields(qint64 processIdentifier) {
    QFile file(u"/proc/%1/stat"_s.arg(processIdentifier));
    if (processIdentifier <= 0 || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray text = file.readAll();
    // The name stands in brackets and may hold anything, brackets and blanks as well.
    return text.mid(text.lastIndexOf(')') + 2).split(' ');
}

enum Field { state = 0, parent = 1, userTime = 11, systemTime = 12 };

} // namespace

bool isAlive(qint64 processIdentifier) {
    const QList<QByteArray> fields = statFields(processIdentifier);
    return !fields.isEmpty() && fields.at(state) != "Z" && fields.at(state) != "X";
}

qint64 processorTicks(qint64 processIdentifier) {
    const QList<QByteArray> fields = statFields(processIdentifier);
    return fields.size() > systemTime ? fields.at(userTime).toLongLong() + fields.at(systemTime).toLongLong()
                                      : -1;
}

qint64 parentOf(qint64 processIdentifier) {
    return statFields(processIdentifier).value(parent).toLongLong();
}

QList<qint64> childrenOf(qint64 processIdentifier) {
    QList<qint64> children;
    for (const QString &name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        const qint64 candidate = name.toLongLong();
        if (candidate > 0 && parentOf(candidate) == processIdentifier && isAlive(candidate))
            children.append(candidate);
    }
    return children;
}

bool comesToRest(qint64 processIdentifier, int milliseconds) {
    constexpr int slice = 300;
    QElapsedTimer total;
    total.start();
    QElapsedTimer unchanged;
    unchanged.start();
    qint64 ticks = processorTicks(processIdentifier);
    return QTest::qWaitFor(
        [&] {
            const qint64 now = processorTicks(processIdentifier);
            if (std::exchange(ticks, now) != now)
                unchanged.restart();
            return unchanged.elapsed() >= slice && total.elapsed() - unchanged.elapsed() <= milliseconds;
        },
        milliseconds + slice + 100);
}
