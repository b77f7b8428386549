#include "faults/SmallDisk.h"

#include <QStorageInfo>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

#include <sys/mount.h>

SmallDisk::SmallDisk() {
    mount(0);
}

SmallDisk::~SmallDisk() {
    ::umount2(QFile::encodeName(path()).constData(), MNT_DETACH);
}

void SmallDisk::fill(qint64 left) {
    constexpr qint64 page = 4096;
    QFile file(filler());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        return;
    qint64 room = QStorageInfo(path()).bytesAvailable();
    const QByteArray zeros(page, '\0');
    for (; room > left && file.write(zeros) == page; room -= page) {
    }
}

void SmallDisk::free() {
    QFile::remove(filler());
}

void SmallDisk::protect() {
    mount(MS_REMOUNT | MS_RDONLY);
}

void SmallDisk::unprotect() {
    mount(MS_REMOUNT);
}

void SmallDisk::mount(unsigned long flags) {
    if (::mount("ostrelin", QFile::encodeName(path()).constData(), "tmpfs", MS_NOSUID | MS_NODEV | flags,
                "size=32m,mode=0700") != 0)
        throw std::runtime_error(std::string("a small disk can't be mounted: ") + std::strerror(errno));
}
