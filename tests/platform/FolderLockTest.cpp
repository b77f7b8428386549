#include "platform/FolderLock.h"

#include "platform/ChildProcess.h"

#include <QTemporaryDir>

#include <optional>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(FolderLock, oneAtATimeHasTheFolder) {
    const QTemporaryDir folder;
    std::optional<FolderLock> first(folder.path());
    EXPECT_TRUE(first->isHeld());
    EXPECT_FALSE(FolderLock(folder.path()).isHeld());
    EXPECT_TRUE(first->isHeld());
    first.reset();
    EXPECT_TRUE(FolderLock(folder.path()).isHeld());
}

TEST(FolderLock, foldersAreApart) {
    const QTemporaryDir one;
    const QTemporaryDir other;
    const FolderLock first(one.path());
    EXPECT_TRUE(FolderLock(other.path()).isHeld());
}

TEST(FolderLock, aChildProcessDoesNotKeepIt) {
    const QTemporaryDir folder;
    std::optional<FolderLock> first(folder.path());
    const ChildProcess child({.executable = u"/bin/sleep"_s,
                              .arguments = {u"60"_s},
                              .environment = QProcessEnvironment::systemEnvironment(),
                              .onOutput = {},
                              .onError = {},
                              .onExit = {}});
    ASSERT_TRUE(child.isRunning());
    first.reset();
    EXPECT_TRUE(FolderLock(folder.path()).isHeld());
}

TEST(FolderLock, whatCannotBeToldIsHeld) {
    EXPECT_TRUE(FolderLock(u"/nowhere/at/all"_s).isHeld());
}
