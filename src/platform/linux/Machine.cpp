#include "platform/Machine.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSysInfo>

#include <algorithm>

#include <sys/statvfs.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

quint64 physicalMemory() {
    const long pages = ::sysconf(_SC_PHYS_PAGES);
    const long pageSize = ::sysconf(_SC_PAGESIZE);
    return pages > 0 && pageSize > 0 ? static_cast<quint64>(pages) * static_cast<quint64>(pageSize) : 0;
}

bool runsNatively() {
    const QString processor = QSysInfo::buildCpuArchitecture();
    return processor == "x86_64"_L1 || processor == "arm64"_L1;
}

bool isTranslated() {
    return false;
}

qint64 freeDisk() {
    struct statvfs volume {};
    if (::statvfs(QFile::encodeName(QDir::homePath()).constData(), &volume) != 0)
        return 0;
    // A volume may call itself larger than a signed number can say.
    const auto blocks = static_cast<quint64>(volume.f_bavail);
    const auto size = std::max<quint64>(volume.f_frsize, 1);
    constexpr quint64 most = std::numeric_limits<qint64>::max();
    return static_cast<qint64>(blocks > most / size ? most : blocks * size);
}

QList<qint64> systemVersion() {
    // Such as "6.1.0-18-amd64": the release of the kernel, as uname(2) tells it.
    static const QRegularExpression numbers(u"^(\\d+)(?:\\.(\\d+))?(?:\\.(\\d+))?"_s);
    QList<qint64> version;
    for (const QString &number : numbers.match(QSysInfo::kernelVersion()).capturedTexts().mid(1))
        version.append(number.toLongLong());
    return version;
}
