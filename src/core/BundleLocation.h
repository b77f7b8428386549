#pragma once

#include <QString>

/// True if a program in that folder runs from a place where it won't stay: a disk image, another volume,
/// the downloads of the person whose home folder that is. Compares texts; the disk isn't looked at.
bool isInTemporaryLocation(const QString &bundleFolder, const QString &homeFolder);

/// The same for the running program and the person who runs it.
bool isInTemporaryLocation();
