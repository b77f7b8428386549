#pragma once

#include <QFile>
#include <QTemporaryDir>

/// A folder on a disk of 32 MB in memory that is nobody else's, and that can be filled to the last byte.
/// Only for a process with mounts of its own; throws std::runtime_error where the system doesn't let it.
class SmallDisk {
public:
    SmallDisk();
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    QString path() const { return m_folder.path(); }

    /// Leaves so many bytes free, a few thousand more or less, until free().
    void fill(qint64 left);
    void free();
    bool isFull() const { return QFile::exists(filler()); }

    /// Lets nothing be changed on it, until unprotect(). Only while nobody has a file of it open for writing.
    void protect();
    void unprotect();

private:
    void mount(unsigned long flags);
    QString filler() const { return m_folder.filePath(QStringLiteral("filler")); }

    QTemporaryDir m_folder;
};
