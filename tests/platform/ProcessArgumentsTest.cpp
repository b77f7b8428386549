#include "platform/ProcessArguments.h"

#include "support/Await.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

TEST(ProcessArguments, theyBeginWithTheProgram) {
    const QStringList arguments = processArguments();
    ASSERT_FALSE(arguments.isEmpty());
    EXPECT_EQ(QFileInfo(arguments.first()).fileName(),
              QFileInfo(QCoreApplication::applicationFilePath()).fileName());
}

TEST(ProcessArguments, theyAreThoseOfTheCommandLine) {
    EXPECT_EQ(processArguments().mid(1, 0), QStringList());
    for (const QString &argument : QCoreApplication::arguments())
        EXPECT_TRUE(processArguments().contains(argument)) << argument.toStdString();
}
