#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <stdexcept>

/// Raised when the file system refuses; what() says which path and why.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// How long a write waits.
enum class Durability {
    flushed, ///< until the disk has it: a power failure leaves the old or the new file
    renamed, ///< not for the disk: the end of the program loses nothing, a power failure may
};

/// Replaces the file at `path` by `bytes` so that a crash leaves the old or the new file, never a
/// part: a temporary file in the same folder, flushed to the disk, then renamed over it.
///
/// A file that stands keeps its mode; a new one is for its owner's eyes only. Where `path` is a symbolic
/// link, the link stays and the file that it leads to is replaced; a link that leads nowhere is replaced
/// itself. Throws FileError and leaves no temporary file; the old file is then still whole, or, if only
/// the flush of the folder failed, the new one. Any thread.
void writeAtomically(const QString &path, const QByteArray &bytes,
                     Durability durability = Durability::flushed);

/// Returns once the disk has the file at `path` as it is now, and knows its name. Throws FileError. Any
/// thread.
void flushToDisk(const QString &path);

/// Gives the file at `from` the name `to` in the same folder, in the place of a file that has it, and
/// returns once the disk knows. What is in the file has to be on the disk before. Throws FileError, with a
/// sentence that a person can read. Any thread.
void moveIntoPlace(const QString &from, const QString &to);

/// Removes what writers that were killed have left in `folder`: their temporary files, once they are an
/// hour old. Any thread.
void removeAbandonedFiles(const QString &folder);

/// The bytes of the file at `path`, or only the first `atMost` of them; nothing if it can't be read or isn't
/// a regular file. Any thread.
std::optional<QByteArray> readFile(const QString &path, std::optional<qint64> atMost = std::nullopt);
