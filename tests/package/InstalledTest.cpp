#include "e2e/OwnSite.h"
#include "e2e/RunningProgram.h"
#include "e2e/TopLevelWindow.h"
#include "package/Command.h"
#include "package/Packages.h"
#include "platform/AtomicFile.h"
#include "platform/Processes.h"
#include "records/ChatStore.h"
#include "records/Folders.h"
#include "schedules/Agents.h"
#include "schedules/ScheduleStore.h"
#include "support/Await.h"
#include "support/DemoModel.h"
#include "support/TemporaryApplicationFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>

#include <gmock/gmock.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString demoModel = u"/usr/lib/ostrelin/Contents/Resources/demo/sprout.gguf"_s;

/// The packages, installed in a root folder of their own, whose system has never seen the program. The build
/// tree isn't there. What a test leaves in that folder the next one finds.
class Installed : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        if (!canInstall())
            return;
        place = new QTemporaryDir;
        outputOf(QStringLiteral(MAKE_ROOT), {place->path(), QDir::tempPath()});
        QStringList command{u"dpkg"_s, u"--force-unsafe-io"_s, u"--install"_s};
        for (const QString &name : {u"ostrelin-engine"_s, u"ostrelin"_s}) {
            if (QFile::copy(packageFile(name), root() + u'/' + name + u".deb"_s))
                command.append(u'/' + name + u".deb"_s);
        }
        outputOf(u"chroot"_s, QStringList{root()} + command);
    }

    static void TearDownTestSuite() {
        if (!place)
            return;
        outputOf(u"umount"_s, {u"--recursive"_s, u"--lazy"_s, place->path()});
        delete place;
    }

    void SetUp() override {
        if (!canInstall())
            GTEST_SKIP() << "NOTHING WAS INSTALLED: that takes root, with mounts of its own";
    }

    /// Only who owns the system may change a copy of it, and only where there are mounts of one's own.
    static bool canInstall() {
        return qgetenv(ownNetworkMark) == "1" && QFileInfo(u"/usr"_s).ownerId() == ::geteuid();
    }
    static QString root() { return place->filePath(u"root"_s); }

    /// Runs a command in that root folder.
    static QByteArray inside(const QStringList &command) {
        return outputOf(u"chroot"_s, QStringList{root()} + command);
    }

    /// A file that starts the installed program in that root folder.
    QString starter() const {
        const QString path = place->filePath(u"start"_s);
        writeAtomically(path, "#!/bin/sh\nexport XDG_CONFIG_HOME='" + folder.configurationHome().toUtf8() +
                                  "'\nexec chroot '" + root().toUtf8() + "' /usr/bin/ostrelin \"$@\"\n");
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }

    static inline QTemporaryDir *place = nullptr;
    TemporaryApplicationFolder folder;
};

/// All that lies below a folder and has one of those names, as paths from there.
QStringList allBelow(const QString &folder, const QStringList &names = {u"*"_s}) {
    QStringList paths;
    QDirIterator all(folder, names, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext())
        paths.append(all.next().mid(folder.size()));
    return paths;
}

/// Those of the changes that the system doesn't have.
QStringList additions(const QString &changes) {
    QStringList paths = allBelow(changes);
    paths.removeIf(
        [](const QString &path) { return QFileInfo::exists(path) || QFileInfo(path).isSymLink(); });
    return paths;
}

} // namespace

TEST_F(Installed, bothPackagesAreInOrder) {
    EXPECT_THAT(inside({u"dpkg-query"_s, u"--show"_s, u"--showformat=${Package} ${db:Status-Abbrev}\n"_s,
                        u"ostrelin*"_s})
                    .toStdString(),
                ::testing::HasSubstr("ostrelin ii "));
    EXPECT_EQ(inside({u"dpkg"_s, u"--audit"_s}), QByteArray());
}

TEST_F(Installed, theDesktopFileNamesTheWindow) {
    RunningProgram program(starter());
    ASSERT_TRUE(program.start());
    ASSERT_TRUE(eventually([&] { return topLevelWindow(program.pid()) != 0; }))
        << program.output().toStdString();
    const QString desktopFile = root() + u"/usr/share/applications/com.quennarbel.ostrelin.desktop"_s;
    EXPECT_THAT(readFile(desktopFile).value().toStdString(),
                ::testing::HasSubstr(
                    "\nStartupWMClass=" + classOfTopLevelWindow(program.pid()).toStdString() + '\n'));
    ASSERT_TRUE(program.closeWindow());
    EXPECT_TRUE(program.waitForEnd());
}

TEST_F(Installed, theModelsOfTheCatalogAreKnown) {
    const EnvironmentVariable tier("OSTRELIN_TIER", "qwen3-32b");
    RunningProgram program(starter());
    ASSERT_TRUE(program.start());
    ASSERT_TRUE(program.window().waitFor(u"Get started"_s, AccessibleRole::pushButton))
        << program.output().toStdString();
    ASSERT_TRUE(program.window().press(u"Get started"_s));
    EXPECT_TRUE(
        program.window().waitFor(u"Setting up Ostrelin for your Mac · 20 GB"_s, AccessibleRole::label));
    ASSERT_TRUE(program.closeWindow());
    EXPECT_TRUE(program.waitForEnd());
}

TEST_F(Installed, theModelAndTheEngineThatCameAlongAnswer) {
    const EnvironmentVariable model("OSTRELIN_MODEL_PATH", demoModel.toLocal8Bit());
    RunningProgram program(starter());
    ASSERT_TRUE(program.start());
    ASSERT_TRUE(program.window().waitFor(u"Get started"_s, AccessibleRole::pushButton));
    ASSERT_TRUE(program.window().press(u"Get started"_s));
    ASSERT_TRUE(program.waitUntilReady()) << program.output().toStdString();
    EXPECT_EQ(processPath(program.enginePid()),
              root() + u"/usr/lib/ostrelin/Contents/Helpers/llama-server"_s);

    ASSERT_TRUE(program.window().press(
        u"Write a friendly note thanking a coworker for helping me hit a deadline."_s));
    EXPECT_TRUE(eventually([&] { return !program.window().said(u"Ostrelin"_s).value(0).isEmpty(); }, 30'000));
    ASSERT_TRUE(program.waitForReply());
    ASSERT_TRUE(program.closeWindow());
    EXPECT_TRUE(program.waitForEnd());
    EXPECT_TRUE(program.endedOrderly());
}

TEST_F(Installed, aScheduleInTheBackgroundStartsTheInstalledProgram) {
    const Schedule schedule{.id = QUuid(u"0E0C9E6B-35E0-4B0B-9A40-5B1F4C1D7A52"_s),
                            .title = u"Morning"_s,
                            .prompt = u"Hello!"_s,
                            .enabled = true,
                            .runInBackground = true};
    installDemoModel();
    const QString model = modelsFolder() + u"/sprout.gguf"_s;
    ASSERT_TRUE(QFile::remove(model) && QFile::link(demoModel, model));
    saveSchedules({schedule});
    const QString unit =
        folder.configurationHome() + u"/systemd/user/"_s + agentLabel(schedule.id) + u".service"_s;
    {
        RunningProgram program(starter());
        ASSERT_TRUE(program.start());
        ASSERT_TRUE(program.waitUntilReady()) << program.output().toStdString();
        ASSERT_TRUE(eventually([&] { return QFileInfo::exists(unit); }));
        ASSERT_TRUE(program.closeWindow());
        ASSERT_TRUE(program.waitForEnd());
    }
    const QString id = schedule.id.toString(QUuid::WithoutBraces).toUpper();
    EXPECT_THAT(readFile(unit).value().toStdString(),
                ::testing::HasSubstr("\"/usr/bin/ostrelin\" \"--run-schedule\" \"" + id.toStdString() + '"'));
    EXPECT_EQ(outputOf(starter(), {u"--run-schedule"_s, id}), QByteArray());
    const QList<ConversationSummary> chats = ChatStore().list();
    EXPECT_TRUE(std::ranges::any_of(chats, [](const auto &chat) { return chat.title == u"Morning"_s; }));
}

TEST_F(Installed, nothingStaysWhenThePackagesGo) {
    inside({u"dpkg"_s, u"--force-unsafe-io"_s, u"--purge"_s, u"ostrelin"_s, u"ostrelin-engine"_s});
    EXPECT_EQ(additions(place->filePath(u"changes"_s)).join(u' ').toStdString(), "");
    EXPECT_EQ(allBelow(root() + u"/var"_s, {u"*ostrelin*"_s}).join(u' ').toStdString(), "");
    EXPECT_FALSE(readFile(root() + u"/var/lib/dpkg/status"_s).value().contains("ostrelin"));
}
