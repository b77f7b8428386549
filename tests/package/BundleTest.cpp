#include "core/ProgramVersion.h"
#include "package/Command.h"
#include "package/Packages.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A property list, as an independent reader takes it.
QJsonObject propertyList(const QString &path = madeFile(u"Info.plist"_s)) {
    const QString reader =
        u"import json, plistlib, sys; print(json.dumps(plistlib.load(open(sys.argv[1], 'rb'))))"_s;
    return QJsonDocument::fromJson(outputOf(u"python3"_s, {u"-c"_s, reader, path})).object();
}

} // namespace

TEST(PropertyList, namesTheProgramAsTheSystemIsToKnowIt) {
    const QJsonObject list = propertyList();
    EXPECT_EQ(list[u"CFBundleIdentifier"_s], u"com.quennarbel.ostrelin"_s);
    EXPECT_EQ(list[u"CFBundleName"_s], u"Ostrelin"_s);
    EXPECT_EQ(list[u"CFBundleExecutable"_s], u"Ostrelin"_s);
    EXPECT_EQ(list[u"CFBundlePackageType"_s], u"APPL"_s);
    EXPECT_EQ(list[u"CFBundleIconFile"_s], u"Ostrelin.icns"_s);
}

TEST(PropertyList, hasTheVersionAndTheBuildOfTheProgram) {
    const QJsonObject list = propertyList();
    EXPECT_EQ(list[u"CFBundleShortVersionString"_s], programVersion().version);
    EXPECT_EQ(list[u"CFBundleVersion"_s], QString::number(programVersion().build));
}

TEST(PropertyList, saysWhichSystemsItIsFor) {
    const QJsonObject list = propertyList();
    EXPECT_EQ(list[u"LSMinimumSystemVersion"_s], u"14.0"_s);
    EXPECT_EQ(list[u"LSArchitecturePriority"_s], QJsonArray{u"arm64"_s});
    EXPECT_EQ(list[u"NSHighResolutionCapable"_s], true);
}

TEST(Bundle, isLaidOutAsTheSystemWantsIt) {
    const QTemporaryDir folder;
    const QString tree = folder.filePath(u"tree"_s);
    const QString source = QStringLiteral(SOURCE_TREE "/tests/package/bundle");
    const QString cmake = QStringLiteral(CMAKE_PROGRAM);
    outputOf(cmake, {u"-S"_s, source, u"-B"_s, tree, u"-G"_s, u"Ninja"_s, u"-DCMAKE_SYSTEM_NAME=Darwin"_s,
                     u"-DCMAKE_C_COMPILER_WORKS=1"_s, u"-DCMAKE_INSTALL_NAME_TOOL=true"_s,
                     u"-DCMAKE_C_COMPILER="_s + source + u"/compiler"_s,
                     u"-DOSTRELIN_SOURCE="_s + QStringLiteral(SOURCE_TREE), u"-Dmade="_s + madeFile({})});
    outputOf(cmake, {u"--build"_s, tree});
    outputOf(cmake, {u"--install"_s, tree, u"--prefix"_s, folder.path()});
    const QString contents = folder.filePath(u"Ostrelin.app/Contents/"_s);
    EXPECT_EQ(propertyList(contents + u"Info.plist"_s), propertyList());
    EXPECT_TRUE(QFileInfo(contents + u"MacOS/Ostrelin"_s).isExecutable());
    EXPECT_TRUE(QFileInfo(contents + u"Helpers/llama-server"_s).isExecutable());
    for (const QString &file : {u"Ostrelin.icns"_s, u"catalog.json"_s, u"demo/sprout.gguf"_s})
        EXPECT_TRUE(QFileInfo(contents + u"Resources/"_s + file).isFile()) << file.toStdString();
}
