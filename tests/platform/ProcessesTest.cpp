#include "platform/Processes.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <gtest/gtest.h>

TEST(ProcessPath, ourOwnIsOurExecutable) {
    EXPECT_EQ(processPath(QCoreApplication::applicationPid()),
              QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath());
}

TEST(ProcessPath, aProcessThatDoesNotExistHasNone) {
    EXPECT_TRUE(processPath(0).isEmpty());
    EXPECT_TRUE(processPath(-1).isEmpty());
    EXPECT_TRUE(processPath(4'194'305).isEmpty()) << "above the highest id that the kernel gives";
}

TEST(SignallingAProcess, aGroupIsNeverMeant) {
    // Zero would be this test's own group, and minus one everybody.
    terminateProcess(0);
    terminateProcess(-1);
    killProcess(0);
    killProcess(-1);
}
