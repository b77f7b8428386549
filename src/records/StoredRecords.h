#pragma once

#include "platform/AtomicFile.h"
#include "records/Coder.h"

#include <QStringList>

#include <algorithm>
#include <optional>

/// What the stores have in common that keep each record in a JSON file of its own.

/// The record in the file at `path`; nothing if it can't be read, holds something else, or doesn't end
/// within `atMost` bytes. Any thread.
template<typename T>
std::optional<T> readRecord(const QString &path, std::optional<qint64> atMost = std::nullopt) {
    const std::optional<QByteArray> text = readFile(path, atMost);
    if (!text)
        return std::nullopt;
    try {
        return decodeRecord<T>(*text);
    } catch (const DecodingError &) {
        return std::nullopt;
    }
}

/// The paths of everything in `folder` whose extension is exactly "json", in the order of the folder
/// itself; none if it can't be read. A name that is all extension has none. Any thread.
QStringList jsonFilesIn(const QString &folder);

/// The rows of a list, newest first; of equal dates the earlier row first.
template<typename Summary>
QList<Summary> newestFirst(QList<Summary> summaries) {
    std::stable_sort(summaries.begin(), summaries.end(), [](const Summary &one, const Summary &other) {
        return one.updatedAt > other.updatedAt;
    });
    return summaries;
}
