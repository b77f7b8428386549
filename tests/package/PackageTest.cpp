#include "package/Command.h"
#include "package/Packages.h"
#include "platform/AtomicFile.h"
#include "support/EnvironmentVariable.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

/// A field of a package's description, without the white space around it.
std::string field(const QString &package, const QString &name) {
    return outputOf(u"dpkg-deb"_s, {u"--field"_s, package, name}).trimmed().toStdString();
}

bool comesWithItsEngine() {
    return QFileInfo(QStringLiteral(BUILD_TREE "/Contents/Helpers/llama-server")).canonicalFilePath() !=
           u"/usr/bin/llama-server"_s;
}

QStringList packages() {
    return comesWithItsEngine() ? QStringList{packageFile(u"ostrelin"_s), packageFile(u"ostrelin-engine"_s)}
                                : QStringList{packageFile(u"ostrelin"_s)};
}

/// The packages' files in a folder that goes with the test.
class UnpackedPackages : public ::testing::Test {
protected:
    void SetUp() override {
        for (const QString &package : packages())
            outputOf(u"dpkg-deb"_s, {u"--extract"_s, package, folder.path()});
    }

    QByteArray content(const QString &path) const { return readFile(folder.filePath(path)).value_or("none"); }

    QTemporaryDir folder;
};

} // namespace

TEST(Package, pleasesTheDistributionsOwnCheck) {
    const QStringList arguments{u"--allow-root"_s, u"--fail-on"_s, u"error,warning"_s};
    EXPECT_EQ(outputOf(u"lintian"_s, arguments + packages()), QByteArray());
}

TEST(Package, ofTheProgramDependsOnWhatItsExecutableNeeds) {
    const std::string depends = field(packageFile(u"ostrelin"_s), u"Depends"_s);
    EXPECT_THAT(depends, AllOf(HasSubstr("libqt6widgets6"), HasSubstr("libqt6svg6"), HasSubstr("libcurl4"),
                               HasSubstr("libmd4c0"), HasSubstr("libc6 (>="), HasSubstr("ca-certificates")));
}

TEST(Package, ofTheEngineIsTheOneThatTheProgramWasMadeWith) {
    if (!comesWithItsEngine())
        GTEST_SKIP() << "this system has an engine of its own";
    EXPECT_THAT(field(packageFile(u"ostrelin"_s), u"Depends"_s),
                HasSubstr("ostrelin-engine (= " PACKAGE_VERSION ")"));
    EXPECT_EQ(field(packageFile(u"ostrelin-engine"_s), u"Depends"_s), "") << "it comes with all it needs";
}

TEST(Package, isOneAloneWhereTheSystemHasTheEngine) {
    const EnvironmentVariable server("OSTRELIN_PACKAGED_SERVER", "/usr/bin/llama-server");
    const QTemporaryDir folder;
    outputOf(QStringLiteral(CPACK_PROGRAM),
             {u"--config"_s, QStringLiteral(BUILD_TREE "/CPackConfig.cmake"), u"-B"_s, folder.path()});
    const QStringList made = QDir(folder.path()).entryList({u"*.deb"_s}, QDir::Files);
    ASSERT_EQ(made, QStringList{QFileInfo(packageFile(u"ostrelin"_s)).fileName()});
    const QString package = folder.filePath(made.first());
    EXPECT_THAT(field(package, u"Depends"_s),
                AllOf(HasSubstr("llama.cpp-tools (>= "), Not(HasSubstr("ostrelin-engine"))));
    EXPECT_EQ(field(package, u"Conflicts"_s), "ostrelin-engine") << "it has a link where that has a file";
    EXPECT_EQ(field(package, u"Replaces"_s), "ostrelin-engine");
    EXPECT_THAT(outputOf(u"dpkg-deb"_s, {u"--contents"_s, package}).toStdString(),
                HasSubstr("./usr/lib/ostrelin/Contents/Helpers/llama-server -> /usr/bin/llama-server"));
}

TEST_F(UnpackedPackages, haveWhatTheProgramFindsAtRunTime) {
    const QString resources = u"usr/lib/ostrelin/Contents/Resources/"_s;
    for (const QString &file : {u"catalog.json"_s, u"demo/sprout.gguf"_s})
        EXPECT_EQ(content(resources + file), readFile(QStringLiteral(SOURCE_TREE "/resources/") + file));
    EXPECT_TRUE(QFileInfo(folder.filePath(u"usr/bin/ostrelin"_s)).isExecutable());
}

// readelf(1): the type DYN is a position-independent executable.
TEST_F(UnpackedPackages, haveAHardenedProgram) {
    if (!IS_HARDENED)
        GTEST_SKIP() << "this build isn't for a person to run";
    const QByteArray text =
        outputOf(u"readelf"_s, {u"--wide"_s, u"--file-header"_s, u"--segments"_s, u"--dynamic"_s,
                                u"--dyn-syms"_s, folder.filePath(u"usr/bin/ostrelin"_s)});
    for (const char *sign : {" DYN ", "GNU_RELRO", "BIND_NOW", "__stack_chk_fail@", "_chk@GLIBC"})
        EXPECT_TRUE(text.contains(sign)) << sign;
}

TEST_F(UnpackedPackages, haveTheDocumentsThatTheirChangelogNames) {
    static const QRegularExpression name(u"docs/[\\w-]+\\.md"_s);
    const QString changes = QString::fromUtf8(readFile(QStringLiteral(SOURCE_TREE "/CHANGELOG.md")).value());
    QStringList names;
    for (const QRegularExpressionMatch &match : name.globalMatch(changes))
        names.append(match.captured());
    EXPECT_FALSE(names.isEmpty());
    for (const QString &document : names)
        EXPECT_NE(content(u"usr/share/doc/ostrelin/"_s + document), "none") << document.toStdString();
}

TEST_F(UnpackedPackages, sayWhatComesFromOthers) {
    EXPECT_THAT(content(u"usr/share/doc/ostrelin/copyright"_s).toStdString(),
                AllOf(HasSubstr("Copyright: 1991-2022 Unicode, Inc."),
                      HasSubstr("\n COPYRIGHT AND PERMISSION NOTICE")));
}

TEST_F(UnpackedPackages, leaveTheBuildTreeBehind) {
    for (const QString &file : {u"usr/bin/ostrelin"_s, u"usr/lib/ostrelin/Contents/Helpers/llama-server"_s}) {
        EXPECT_FALSE(content(file).contains(BUILD_TREE)) << file.toStdString();
        EXPECT_FALSE(content(file).contains(SOURCE_TREE)) << file.toStdString();
    }
}

TEST_F(UnpackedPackages, sayWhatTheEngineIsLicensedUnder) {
    if (!comesWithItsEngine())
        GTEST_SKIP() << "this system has an engine of its own";
    const QString documents = u"usr/share/doc/ostrelin-engine/"_s;
    EXPECT_THAT(
        content(documents + u"copyright"_s).toStdString(),
        AllOf(HasSubstr("llama.cpp-tools 1:"), HasSubstr("(source: glibc "), HasSubstr("MIT License")));
    for (const QString &package : {u"libc6"_s, u"libgomp1"_s, u"llama.cpp-tools"_s})
        EXPECT_THAT(content(documents + u"licences/"_s + package).toStdString(), HasSubstr("Copyright"));
}
