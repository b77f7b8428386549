#pragma once

#include <QByteArray>
#include <QStringList>

/// What a command has said, and how it ended.
struct CommandResult {
    int status;
    QByteArray output; ///< both of its streams
};

/// Runs a command to its end; -1 stands for one that couldn't be run, crashed or hung.
CommandResult runCommand(const QString &program, const QStringList &arguments);

/// What the command printed. A status that isn't 0 fails the test with that.
QByteArray outputOf(const QString &program, const QStringList &arguments);
