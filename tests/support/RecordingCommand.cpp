#include "support/RecordingCommand.h"

#include <QFile>

#include <stdexcept>

using namespace Qt::StringLiterals;

RecordingCommand::RecordingCommand(const QString &name, const QByteArray &then)
    : m_path(m_folder.filePath(name)) {
    QFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("the command can't be written");
    // A call is a line, and its arguments end with a unit separator each.
    file.write("#!/bin/sh\n{ printf '%s\\037' \"$@\"; echo; } >>\"$0.calls\"\n" + then + '\n');
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QList<QStringList> RecordingCommand::calls() const {
    QFile file(m_path + u".calls"_s);
    QList<QStringList> calls;
    if (!file.open(QIODevice::ReadOnly))
        return calls;
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    lines.removeLast();
    for (const QString &line : lines)
        calls.append(line.chopped(1).split(u'\x1F'));
    return calls;
}
