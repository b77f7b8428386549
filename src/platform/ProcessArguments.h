#pragma once

#include <QStringList>

/// The command line of this process as it was started, the program first. Any thread, also before there
/// is an application object and after that has taken its own arguments out.
QStringList processArguments();
