#include "package/Command.h"

#include <QProcess>

#include <gtest/gtest.h>

CommandResult runCommand(const QString &program, const QStringList &arguments) {
    constexpr int patience = 110'000;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    const bool hasEnded = process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit;
    const QByteArray output = process.readAll();
    return {hasEnded ? process.exitCode() : -1, hasEnded ? output : output + process.errorString().toUtf8()};
}

QByteArray outputOf(const QString &program, const QStringList &arguments) {
    const CommandResult result = runCommand(program, arguments);
    EXPECT_EQ(result.status, 0) << program.toStdString() << ": " << result.output.toStdString();
    return result.output;
}
