#include "platform/AtomicFile.h"

#include "platform/Descriptor.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray temporaryPrefix = ".ostrelin-";

[[noreturn]] void refuse(const QByteArray &path, int reason) {
    throw FileError(path.toStdString() + ": " + std::strerror(reason));
}

/// A new file beside its destination, which it either becomes or vanishes from.
class TemporaryFile {
public:
    explicit TemporaryFile(const QByteArray &folder)
        : m_path(folder + '/' + unpredictableName()),
          m_file(::open(m_path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600)) {
        if (m_file.number() < 0)
            refuse(m_path, errno);
    }
    ~TemporaryFile() {
        if (!m_moved)
            ::unlink(m_path.constData());
    }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    void write(const QByteArray &bytes) {
        const char *next = bytes.constData();
        for (qsizetype left = bytes.size(); left > 0;) {
            const ssize_t written = ::write(m_file.number(), next, static_cast<size_t>(left));
            if (written < 0 && errno == EINTR)
                continue;
            if (written < 0)
                refuse(m_path, errno);
            next += written;
            left -= written;
        }
    }

    void takeModeOf(const QByteArray &path) {
        struct stat status {};
        if (::stat(path.constData(), &status) == 0 && ::fchmod(m_file.number(), status.st_mode & 07777) != 0)
            refuse(m_path, errno);
    }

    void flush() {
        if (::fsync(m_file.number()) != 0)
            refuse(m_path, errno);
    }

    void moveTo(const QByteArray &path) {
        if (::rename(m_path.constData(), path.constData()) != 0)
            refuse(path, errno);
        m_moved = true;
    }

private:
    static QByteArray unpredictableName() {
        QRandomGenerator *random = QRandomGenerator::system();
        return temporaryPrefix + QByteArray::number(random->generate64(), 16) +
               QByteArray::number(random->generate64(), 16) + ".tmp";
    }

    QByteArray m_path;
    Descriptor m_file;
    bool m_moved = false;
};

/// The file that a symbolic link leads to; a link that leads nowhere stands for itself.
QString destinationOf(const QString &path) {
    const QString resolved = QFileInfo(path).canonicalFilePath();
    return resolved.isEmpty() ? path : resolved;
}

/// 0, or the reason why the disk may not know the names in the folder.
int flushFolder(const QByteArray &folder) {
    const Descriptor opened(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.number() < 0)
        return errno;
    // Some file systems can't flush a folder and say so with EINVAL; there is nothing more to do then.
    return ::fsync(opened.number()) == 0 || errno == EINVAL ? 0 : errno;
}

} // namespace

void writeAtomically(const QString &path, const QByteArray &bytes, Durability durability) {
    const QString destination = destinationOf(path);
    const QByteArray name = QFile::encodeName(destination);
    const QByteArray folder = QFile::encodeName(QFileInfo(destination).absolutePath());
    {
        TemporaryFile file(folder);
        file.write(bytes);
        file.takeModeOf(name);
        if (durability == Durability::flushed)
            file.flush();
        file.moveTo(name);
    }
    if (durability == Durability::renamed)
        return;
    if (const int reason = flushFolder(folder); reason != 0)
        refuse(folder, reason);
}

void flushToDisk(const QString &path) {
    const QString destination = destinationOf(path);
    const QByteArray name = QFile::encodeName(destination);
    const QByteArray folder = QFile::encodeName(QFileInfo(destination).absolutePath());
    const Descriptor file(::open(name.constData(), O_RDONLY | O_CLOEXEC));
    if (file.number() < 0 || ::fsync(file.number()) != 0)
        refuse(name, errno);
    if (const int reason = flushFolder(folder); reason != 0)
        refuse(folder, reason);
}

void moveIntoPlace(const QString &from, const QString &to) {
    const bool isMoved =
        ::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
    const int reason = isMoved ? flushFolder(QFile::encodeName(QFileInfo(to).absolutePath())) : errno;
    if (reason != 0)
        throw FileError('"' + QFileInfo(to).fileName().toStdString() +
                        "\" could not be saved: " + std::strerror(reason) + '.');
}

void removeAbandonedFiles(const QString &folder) {
    const QDateTime hourAgo = QDateTime::currentDateTimeUtc().addSecs(-3600);
    const QStringList pattern{QString::fromLatin1(temporaryPrefix) + u"*.tmp"_s};
    for (const QFileInfo &file : QDir(folder).entryInfoList(pattern, QDir::Files | QDir::Hidden)) {
        if (file.lastModified() < hourAgo)
            QFile::remove(file.filePath());
    }
}

std::optional<QByteArray> readFile(const QString &path, std::optional<qint64> atMost) {
    // Opening a pipe in the place of a file would wait for somebody to write.
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = atMost ? file.read(*atMost) : file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}
