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

/// Replaces the file at `path` by `bytes` so that a crash leaves the old or the new file, never a
/// part: a temporary file in the same folder, flushed to the disk, then renamed over it. Throws
/// FileError; the old file is then still whole. Any thread.
void writeAtomically(const QString &path, const QByteArray &bytes);

/// The bytes of the file at `path`; nothing if it can't be read. Any thread.
std::optional<QByteArray> readFile(const QString &path);
