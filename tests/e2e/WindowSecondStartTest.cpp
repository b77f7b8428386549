#include "e2e/ProcessStatus.h"
#include "e2e/TopLevelWindow.h"
#include "e2e/WindowFixture.h"
#include "platform/AtomicFile.h"
#include "records/Folders.h"
#include "schedules/ScheduleStore.h"
#include "support/EnvironmentVariable.h"

using namespace Qt::StringLiterals;

namespace {

using WindowSecondStart = WindowFixture;

} // namespace

TEST_F(WindowSecondStart, itShowsTheFirstOnesWindowAndEnds) {
    startProgram();
    const qint64 engine = program.enginePid();
    const quint32 mainWindow = topLevelWindow(program.pid());
    ASSERT_TRUE(focusTopLevelWindow(program.pid()));
    ASSERT_TRUE(window().typeWithControl(','));
    ASSERT_TRUE(eventually([&] { return focusedWindow() != mainWindow; })) << "the settings stand before it";
    RunningProgram second(QStringLiteral(PROGRAM_PATH));
    ASSERT_TRUE(second.start());
    EXPECT_TRUE(second.waitForEnd());
    EXPECT_TRUE(second.endedOrderly()) << second.output().toStdString();
    EXPECT_TRUE(eventually([&] { return focusedWindow() == mainWindow; }));
    EXPECT_TRUE(isAlive(engine)) << "the second start has ended the first one's engine";
    EXPECT_EQ(program.enginePid(), engine);
    EXPECT_EQ(readFile(enginePidFile()), QByteArray::number(engine));
    EXPECT_TRUE(window().shows(u"Send message"_s, AccessibleRole::pushButton));
}

TEST_F(WindowSecondStart, inAnotherSessionOnTheSameFilesItEndsToo) {
    startProgram();
    const qint64 engine = program.enginePid();
    const QTemporaryDir runtime;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nowhere/bus"_s);
    environment.insert(u"XDG_RUNTIME_DIR"_s, runtime.path());
    QProcess other;
    other.setProcessEnvironment(environment);
    other.start(QStringLiteral(PROGRAM_PATH), QStringList());
    ASSERT_TRUE(other.waitForFinished());
    EXPECT_EQ(other.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(other.exitCode(), EXIT_FAILURE);
    EXPECT_TRUE(other.readAllStandardError().contains("Ostrelin is running in another session already."));
    EXPECT_TRUE(isAlive(engine));
    EXPECT_EQ(readFile(enginePidFile()), QByteArray::number(engine));
}

TEST_F(WindowSecondStart, theFirstStartOfAllMakesItsFoldersForItsOwnerAlone) {
    const QString data = folder.dataHome() + u"/made"_s;
    const EnvironmentVariable home("XDG_DATA_HOME", data.toLocal8Bit());
    QProcess started;
    started.start(QStringLiteral(PROGRAM_PATH), QStringList());
    ASSERT_TRUE(eventually([&] { return topLevelWindow(started.processId()) != 0; }));
    constexpr QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    for (const QString &path : {data, data + u"/Ostrelin"_s}) {
        ASSERT_TRUE(eventually([&] { return QFileInfo(path).isDir(); })) << path.toStdString();
        EXPECT_FALSE(QFile::permissions(path) & others) << path.toStdString();
    }
    started.terminate();
    EXPECT_TRUE(started.waitForFinished());
}

TEST_F(WindowSecondStart, afterTheFirstHasEndedItIsAFirst) {
    startProgram();
    ASSERT_TRUE(program.closeWindow());
    ASSERT_TRUE(program.waitForEnd());
    startProgram();
    EXPECT_TRUE(isAlive(program.enginePid()));
}

TEST_F(WindowSecondStart, theRunOfAScheduleHasNoWindowAndDisturbsNobody) {
    const Schedule schedule{.id = QUuid(u"6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11"_s),
                            .prompt = u"Hello!"_s,
                            .runInBackground = true};
    saveSchedules({schedule});
    startProgram();
    const qint64 engine = program.enginePid();
    QProcess run;
    run.start(QStringLiteral(PROGRAM_PATH), {u"--run-schedule"_s, u"6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11"_s});
    ASSERT_TRUE(run.waitForStarted());
    const qint64 pid = run.processId();
    bool hadWindow = false;
    EXPECT_TRUE(eventually([&] {
        hadWindow = hadWindow || topLevelWindow(pid) != 0;
        return run.state() == QProcess::NotRunning;
    }));
    EXPECT_FALSE(hadWindow);
    EXPECT_EQ(run.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(isAlive(engine));
    EXPECT_EQ(readFile(enginePidFile()), QByteArray::number(engine));
    EXPECT_EQ(loadSchedules(), QList{schedule}) << "it has run beside the program";
}

TEST_F(WindowSecondStart, aRunWithoutAProperIdIsAnOrdinaryStart) {
    QProcess started;
    started.start(QStringLiteral(PROGRAM_PATH), {u"--run-schedule"_s, u"abc"_s});
    ASSERT_TRUE(started.waitForStarted());
    EXPECT_TRUE(eventually([&] { return topLevelWindow(started.processId()) != 0; }));
    started.terminate();
    EXPECT_TRUE(started.waitForFinished());
    EXPECT_EQ(started.exitCode(), 0);
}
