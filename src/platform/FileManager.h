#pragma once

#include <QString>

/// Shows the file at `path` in the desktop's file manager: its folder, with the file selected where the
/// file manager can do that. Returns at once; nothing happens on a machine without a desktop. Main thread.
void revealFile(const QString &path);
