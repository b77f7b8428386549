#include "package/Command.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

TEST(Install, putsAProgramIntoAnyFolderThatRunsFromThere) {
    const QTemporaryDir folder;
    outputOf(QStringLiteral(CMAKE_PROGRAM),
             {u"--install"_s, QStringLiteral(BUILD_TREE), u"--prefix"_s, folder.path()});
    EXPECT_TRUE(QFileInfo(folder.filePath(u"bin/ostrelin"_s)).isExecutable());
    EXPECT_TRUE(QFileInfo::exists(folder.filePath(u"lib/ostrelin/Contents/Resources/catalog.json"_s)));
    EXPECT_TRUE(QFileInfo::exists(folder.filePath(u"share/applications/com.quennarbel.ostrelin.desktop"_s)));
    const QString server = folder.filePath(u"lib/ostrelin/Contents/Helpers/llama-server"_s);
    EXPECT_THAT(outputOf(server, {u"--version"_s}).toStdString(), ::testing::HasSubstr("version"));
}

TEST(Install, intoAFolderBesideTheCallerRunsFromElsewhere) {
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    QDir::setCurrent(folder.path());
    outputOf(QStringLiteral(CMAKE_PROGRAM),
             {u"--install"_s, QStringLiteral(BUILD_TREE), u"--prefix"_s, u"out"_s});
    QDir::setCurrent(before);
    const QString server = folder.filePath(u"out/lib/ostrelin/Contents/Helpers/llama-server"_s);
    EXPECT_THAT(outputOf(server, {u"--version"_s}).toStdString(), ::testing::HasSubstr("version"));
}
