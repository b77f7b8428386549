#include "platform/Bundle.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Bundle, aBuildTreeHoldsItsContentsBesideTheExecutable) {
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"Contents"_s));
    EXPECT_EQ(bundleFolderBeside(folder.path()), folder.path());
}

TEST(Bundle, anInstalledProgramFindsItsContentsInTheLibraryFolder) {
    EXPECT_EQ(bundleFolderBeside(u"/nowhere/bin"_s), u"/nowhere/lib/ostrelin"_s);
}

TEST(Bundle, theRunningProgramIsTheMeasure) {
    EXPECT_EQ(mainBundleFolder(), bundleFolderBeside(QCoreApplication::applicationDirPath()));
    EXPECT_EQ(resourcesFolder(), mainBundleFolder() + u"/Contents/Resources"_s);
    EXPECT_EQ(executablePath(), QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath());
}
