#pragma once

#include <QString>

/// Which build of llama.cpp the program comes with: the 40 hexadecimal digits of its commit, or its version
/// where its package doesn't tell that. It stands in `engine-build.txt` in the folder of resources; empty
/// where that is missing. Any thread.
QString engineBuild(const QString &resourcesFolder);
