#pragma once

#include <QString>

/// The path of an executable that the kernel gave, without what it adds once the file has been removed or
/// replaced (proc(5), "/proc/[pid]/exe"); for the insides of this room.
inline QString withoutDeletedMark(const QString &path) {
    constexpr QLatin1StringView mark(" (deleted)");
    return path.endsWith(mark) ? path.chopped(mark.size()) : path;
}
