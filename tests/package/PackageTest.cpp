#include "package/Command.h"
#include "package/Packages.h"
#include "platform/AtomicFile.h"
#include "support/EnvironmentVariable.h"

#include <QDir>
#include <QFileInfo>
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
                AllOf(HasSubstr("llama.cpp-tools"), Not(HasSubstr("ostrelin-engine"))));
    EXPECT_THAT(outputOf(u"dpkg-deb"_s, {u"--contents"_s, package}).toStdString(),
                HasSubstr("./usr/lib/ostrelin/Contents/Helpers/llama-server -> /usr/bin/llama-server"));
}

TEST_F(UnpackedPackages, haveWhatTheProgramFindsAtRunTime) {
    const QString resources = u"usr/lib/ostrelin/Contents/Resources/"_s;
    for (const QString &file : {u"catalog.json"_s, u"demo/sprout.gguf"_s})
        EXPECT_EQ(content(resources + file), readFile(QStringLiteral(SOURCE_TREE "/resources/") + file));
    EXPECT_TRUE(QFileInfo(folder.filePath(u"usr/bin/ostrelin"_s)).isExecutable());
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
