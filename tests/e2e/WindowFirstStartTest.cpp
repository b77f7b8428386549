#include "e2e/ProcessStatus.h"
#include "e2e/RunningProgram.h"
#include "e2e/TopLevelWindow.h"
#include "platform/AtomicFile.h"
#include "platform/Machine.h"
#include "records/Coder.h"
#include "records/Folders.h"
#include "records/Settings.h"
#include "support/Await.h"
#include "support/DemoModel.h"
#include "support/EnvironmentVariable.h"
#include "support/FileServer.h"
#include "support/ScriptedEngine.h"
#include "support/TemporaryApplicationFolder.h"

#include <QDirIterator>
#include <QFileInfo>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

/// A machine that has never seen the program, and a network that offers one model: the demo model.
class WindowFirstStart : public ::testing::Test {
protected:
    WindowFirstStart() {
        ModelTier tier = demoTier(server.url());
        tier.requiredGPUBytes = 1;
        catalog.answer(Script(200).raw(encodeRecord(Catalog{1, {tier}})));
    }

    void SetUp() override {
        constexpr qint64 needed = 5'100'000'000;
        ASSERT_GT(freeDisk(), needed) << "no model fits on a disk as full as this machine's";
    }

    AccessibleWindow &window() { return program.window(); }

    bool shows(const QString &text) { return window().waitFor(text, AccessibleRole::label); }

    void expectNoFaults() {
        const QStringList faults = faultsOf(window().contents());
        EXPECT_TRUE(faults.isEmpty()) << faults.join(u'\n').toStdString();
    }

    /// Presses a button as soon as it shows.
    bool press(const QString &name) {
        return window().waitFor(name, AccessibleRole::pushButton) && window().press(name);
    }

    /// Starts the download from the welcome screen; the server says no more after half of the file.
    void downloadHalf() {
        server.setManner({.holdAt = model.size() / 2});
        ASSERT_TRUE(program.start());
        ASSERT_TRUE(shows(u"Free. Private. Works offline."_s)) << program.output().toStdString();
        expectNoFaults();
        ASSERT_TRUE(press(u"Get started"_s));
        ASSERT_TRUE(eventually([this] { return partialSize() == model.size() / 2; }));
    }

    qint64 partialSize() const { return QFileInfo(modelFile() + u".partial"_s).size(); }
    static QString modelFile() { return modelsFolder() + u"/sprout.gguf"_s; }

    const QByteArray model = readFile(demoModelPath()).value();
    FileServer server{model};
    ScriptedEngine catalog;
    TemporaryApplicationFolder folder;
    EnvironmentVariable address{"OSTRELIN_CATALOGURL", catalog.url().toString().toLocal8Bit()};
    RunningProgram program{QStringLiteral(PROGRAM_PATH)};
};

} // namespace

TEST_F(WindowFirstStart, fromTheWelcomeToAReplyWithAPauseOnTheWay) {
    downloadHalf();
    EXPECT_TRUE(shows(u"Setting up Ostrelin for your Mac · 5 MB"_s));
    expectNoFaults();
    ASSERT_TRUE(press(u"Pause"_s));
    ASSERT_TRUE(window().waitFor(u"Resume"_s, AccessibleRole::pushButton));
    EXPECT_TRUE(eventually([this] { return server.openConnections() == 0; }));
    EXPECT_EQ(partialSize(), model.size() / 2);

    server.setManner({});
    ASSERT_TRUE(press(u"Resume"_s));
    ASSERT_TRUE(program.waitUntilReady());
    EXPECT_EQ(server.ranges(), (QByteArrayList{"", "bytes=" + QByteArray::number(model.size() / 2) + '-'}));
    EXPECT_EQ(readFile(modelFile()), model);
    EXPECT_FALSE(QFile::exists(modelFile() + u".partial"_s));
    EXPECT_EQ(loadSettings().installed->tierId, u"sprout-demo"_s);

    ASSERT_TRUE(press(u"Write a friendly note thanking a coworker for helping me hit a deadline."_s));
    ASSERT_TRUE(eventually([this] { return !window().said(u"Ostrelin"_s).value(0).isEmpty(); }, 30'000));
    ASSERT_TRUE(program.waitForReply());
}

TEST_F(WindowFirstStart, aProgramThatIsKilledInMidDownloadGoesOnAtItsNextStart) {
    downloadHalf();
    program.signal(SIGKILL);
    ASSERT_TRUE(program.waitForEnd());
    server.setManner({});
    ASSERT_TRUE(program.start());
    ASSERT_TRUE(program.waitUntilReady());
    EXPECT_EQ(server.ranges().last(), "bytes=" + QByteArray::number(model.size() / 2) + '-');
    EXPECT_EQ(readFile(modelFile()), model);
}

TEST_F(WindowFirstStart, quittingInMidDownloadIsQuickAndKeepsWhatCame) {
    downloadHalf();
    ASSERT_TRUE(program.closeWindow());
    EXPECT_TRUE(program.waitForEnd(3000));
    EXPECT_TRUE(program.endedOrderly());
    EXPECT_EQ(partialSize(), model.size() / 2);
}

TEST_F(WindowFirstStart, deletingEverythingLeavesAnEmptyFolderAndTheStartScreen) {
    downloadHalf();
    server.goOn();
    ASSERT_TRUE(program.waitUntilReady());
    const qint64 engine = program.enginePid();
    ASSERT_TRUE(press(u"Write a friendly note thanking a coworker for helping me hit a deadline."_s));
    ASSERT_TRUE(eventually([this] { return !window().said(u"Ostrelin"_s).value(0).isEmpty(); }, 30'000));

    ASSERT_TRUE(focusTopLevelWindow(program.pid()));
    ASSERT_TRUE(window().typeWithControl(','));
    ASSERT_TRUE(window().waitFor(u"Data"_s, AccessibleRole::listItem));
    ASSERT_TRUE(window().press(u"Data"_s, AccessibleRole::listItem));
    ASSERT_TRUE(press(u"Delete all my data related to Ostrelin (including my downloaded LLMs)"_s));
    ASSERT_TRUE(press(u"Delete everything"_s));

    ASSERT_TRUE(window().waitFor(u"Start"_s, AccessibleRole::pushButton));
    EXPECT_TRUE(shows(u"To get started, initialize Ostrelin."_s));
    EXPECT_FALSE(isAlive(engine));
    QStringList left;
    QDirIterator files(applicationFolder(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        left.append(QFileInfo(files.next()).fileName());
    EXPECT_EQ(left, QStringList(u"CACHEDIR.TAG"_s));
}
