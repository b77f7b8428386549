#pragma once

#include <QString>

/// Marks a folder as not worth a backup. On Linux by a CACHEDIR.TAG file, the convention that backup
/// programs honour (bford.info/cachedir). Throws FileError. Any thread.
void excludeFromBackup(const QString &folder);
