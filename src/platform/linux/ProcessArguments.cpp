#include "platform/ProcessArguments.h"

#include <QFile>

using namespace Qt::StringLiterals;

QStringList processArguments() {
    QFile file(u"/proc/self/cmdline"_s);
    QStringList arguments;
    if (!file.open(QIODevice::ReadOnly))
        return arguments;
    QByteArray line = file.readAll();
    if (line.endsWith('\0'))
        line.chop(1);
    for (const QByteArray &argument : line.split('\0'))
        arguments.append(QFile::decodeName(argument));
    return arguments;
}
