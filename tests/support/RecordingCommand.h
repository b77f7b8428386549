#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A stand-in for a command of the system: an executable that notes what it was called with.
class RecordingCommand {
public:
    /// What it does after that is a line of shell, such as "exit 1".
    explicit RecordingCommand(const QString &name, const QByteArray &then = ":");

    QString path() const { return m_path; }

    /// The arguments of all calls so far, the first call first.
    QList<QStringList> calls() const;

private:
    QTemporaryDir m_folder;
    QString m_path;
};
