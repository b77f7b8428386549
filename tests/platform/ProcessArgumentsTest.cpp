#include "platform/ProcessArguments.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <gtest/gtest.h>

TEST(ProcessArguments, theyBeginWithTheProgram) {
    const QStringList arguments = processArguments();
    ASSERT_FALSE(arguments.isEmpty());
    EXPECT_EQ(QFileInfo(arguments.first()).fileName(),
              QFileInfo(QCoreApplication::applicationFilePath()).fileName());
}

TEST(ProcessArguments, theyAreThoseOfTheCommandLine) {
    // The test library has taken out its own.
    for (const QString &argument : QCoreApplication::arguments())
        EXPECT_TRUE(processArguments().contains(argument)) << argument.toStdString();
}
