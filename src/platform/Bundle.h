#pragma once

#include <QString>

/// Where the program's own files lie: a folder that holds `Contents`, laid out as in the finished
/// application. Any thread.

/// The folder that goes with an executable in `executableFolder`: that folder itself if it holds
/// `Contents`, as in a build tree; else `lib/ostrelin` beside it, as once installed.
QString bundleFolderBeside(const QString &executableFolder);

/// The running program itself, as a path that starts it again; empty if its file is gone.
QString executablePath();

/// The folder of the running program.
QString mainBundleFolder();

/// The running program's catalog, demo model and the like: `Contents/Resources` of its folder.
QString resourcesFolder();
