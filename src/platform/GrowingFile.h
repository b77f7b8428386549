#pragma once

#include "platform/AtomicFile.h"
#include "platform/Descriptor.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>

/// Raised when a file can't grow because its disk is full.
class DiskFullError : public FileError {
public:
    using FileError::FileError;
};

/// A file of many gigabytes that is written at its end alone, and that may be whole only after several
/// runs of the program. Any thread, one at a time.
class GrowingFile {
public:
    /// Opens the file, or makes an empty one for its owner's eyes. Throws FileError.
    explicit GrowingFile(const QString &path);

    /// Writes the pieces after what is there. On failure, of which some bytes may have been written, throws
    /// DiskFullError or another FileError. The disk is kept busy along the way, so that the bytes that wait
    /// for it stay few.
    void append(const QList<QByteArray> &pieces);

    /// Returns once everything is on the disk. Throws as append().
    void flush();

private:
    void writeAll(const QByteArray *first, qsizetype count);
    void urgeTheDisk(qint64 written);
    [[noreturn]] void refuse(int reason) const;

    QString m_name;
    Descriptor m_file;
    qint64 m_end = 0;   ///< of the file
    qint64 m_urged = 0; ///< up to here the disk has been told to write
};

/// Hands the bytes of the file at `path` to `take`, in pieces of up to `pieceSize` bytes, until the end or
/// until `take` gives false. A piece is valid during the call. Throws FileError. Any thread.
void readInPieces(const QString &path, qsizetype pieceSize, const std::function<bool(QByteArrayView)> &take);
