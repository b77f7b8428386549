#pragma once

#include <QList>
#include <QString>

/// An engine process, and whose child it is.
struct RunningEngine {
    qint64 pid = 0;
    qint64 parent = 0;
};

/// The living engines of this machine whose application folder lies in `dataHome`, whoever started them.
QList<RunningEngine> enginesOf(const QString &dataHome);
