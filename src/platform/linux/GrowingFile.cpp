#include "platform/GrowingFile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

constexpr qsizetype mostPiecesAtOnce = 256;
constexpr qint64 urgedAtOnce = 16'000'000;

std::string sentence(const QString &name, const char *what, int reason) {
    return '"' + name.toStdString() + "\" could not be " + what + ": " + std::strerror(reason) + '.';
}

} // namespace

GrowingFile::GrowingFile(const QString &path)
    : m_name(QFileInfo(path).fileName()),
      m_file(::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600)) {
    if (m_file.number() < 0)
        throw FileError(sentence(m_name, "opened", errno));
    m_end = ::lseek(m_file.number(), 0, SEEK_END);
    if (m_end < 0)
        throw FileError(sentence(m_name, "opened", errno));
    m_urged = m_end;
}

void GrowingFile::append(const QList<QByteArray> &pieces) {
    for (qsizetype first = 0; first < pieces.size(); first += mostPiecesAtOnce)
        writeAll(pieces.constData() + first, std::min(mostPiecesAtOnce, pieces.size() - first));
}

void GrowingFile::writeAll(const QByteArray *first, qsizetype count) {
    std::array<iovec, mostPiecesAtOnce> parts;
    for (qsizetype index = 0; index < count; ++index)
        parts[size_t(index)] = {const_cast<char *>(first[index].constData()), size_t(first[index].size())};
    iovec *next = parts.data();
    iovec *const end = next + count;
    while (next != end) {
        const ssize_t written = ::writev(m_file.number(), next, static_cast<int>(end - next));
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            refuse(errno);
        urgeTheDisk(written);
        auto left = static_cast<size_t>(written);
        for (; next != end && left >= next->iov_len; ++next)
            left -= next->iov_len;
        if (next != end) {
            next->iov_base = static_cast<char *>(next->iov_base) + left;
            next->iov_len -= left;
        }
    }
}

void GrowingFile::urgeTheDisk(qint64 written) {
    m_end += written;
    if (m_end - m_urged < urgedAtOnce)
        return;
    // Begins the writing and doesn't wait; a refusal shows in the flush.
    ::sync_file_range(m_file.number(), m_urged, m_end - m_urged, SYNC_FILE_RANGE_WRITE);
    m_urged = m_end;
}

void GrowingFile::flush() {
    if (::fsync(m_file.number()) == 0)
        return;
    const int reason = errno;
    // What didn't get to the disk may stand in memory as if it had; whoever reads the file next is to see
    // what the disk holds.
    ::posix_fadvise(m_file.number(), 0, 0, POSIX_FADV_DONTNEED);
    refuse(reason);
}

void GrowingFile::refuse(int reason) const {
    const std::string text = sentence(m_name, "saved", reason);
    if (reason == ENOSPC)
        throw DiskFullError(text);
    throw FileError(text);
}

void readInPieces(const QString &path, qsizetype pieceSize, const std::function<bool(QByteArrayView)> &take) {
    const QString name = QFileInfo(path).fileName();
    const Descriptor file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC));
    if (file.number() < 0)
        throw FileError(sentence(name, "opened", errno));
    ::posix_fadvise(file.number(), 0, 0, POSIX_FADV_SEQUENTIAL);
    QByteArray piece(pieceSize, Qt::Uninitialized);
    for (;;) {
        const ssize_t count = ::read(file.number(), piece.data(), static_cast<size_t>(pieceSize));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw FileError(sentence(name, "read", errno));
        if (count == 0 || !take(QByteArrayView(piece.constData(), count)))
            return;
    }
}
