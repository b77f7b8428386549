#pragma once

#include <QString>

/// Which release of the program this is. Any thread.
struct ProgramVersion {
    QString version; ///< dotted numbers
    qint64 build = 1;
};

/// This very program's.
ProgramVersion programVersion();
