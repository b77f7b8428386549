#include "platform/FolderLock.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>

FolderLock::FolderLock(const QString &folder)
    : m_folder(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    m_isHeld = ::flock(m_folder.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}
