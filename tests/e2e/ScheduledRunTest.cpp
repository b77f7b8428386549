#include "e2e/EndlessEngine.h"
#include "e2e/ProcessStatus.h"
#include "platform/AtomicFile.h"
#include "platform/Processes.h"
#include "records/ChatStore.h"
#include "records/Folders.h"
#include "records/JsonFields.h"
#include "records/Settings.h"
#include "schedules/ScheduleStore.h"
#include "support/Await.h"
#include "support/DemoModel.h"
#include "support/NotificationService.h"
#include "support/PrivateBus.h"
#include "support/SilentBus.h"
#include "support/TemporaryApplicationFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString failure = u"A scheduled run could not finish."_s;

/// The program as the system's timer starts it on a machine without a display: a copy of it, so that no other
/// one counts as another instance. The demo model is installed, and there is one schedule.
class ScheduledRun : public ::testing::Test {
protected:
    ScheduledRun() {
        installDemoModel();
        saveSchedules({schedule});
        QFile::copy(QStringLiteral(PROGRAM_PATH), program());
        QFile::link(QFileInfo(QStringLiteral(PROGRAM_PATH)).absolutePath() + u"/Contents"_s,
                    place.filePath(u"Contents"_s));
    }

    ~ScheduledRun() override {
        for (const auto &run : runs) {
            run->kill();
            run->waitForFinished();
        }
    }

    void SetUp() override {
        const QFileInfo server(qEnvironmentVariable("OSTRELIN_LLAMA_SERVER"));
        ASSERT_TRUE(server.isExecutable()) << "no engine at OSTRELIN_LLAMA_SERVER; scripts/engine brings it";
    }

    QString program() const { return place.filePath(u"ostrelin"_s); }

    /// Starts a run of that schedule, with the address of a session bus or without.
    QProcess &start(const QUuid &id, const QString &bus = {}) {
        return launch({u"--run-schedule"_s, id.toString(QUuid::WithoutBraces)}, environmentWith(bus));
    }

    /// Opens the program itself, on a screen that nobody sees.
    QProcess &open(const QString &bus = {}) {
        auto environment = environmentWith(bus);
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        return launch({}, environment);
    }

    QProcessEnvironment environmentWith(const QString &bus) const {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const QString &name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s,
                                    u"XDG_RUNTIME_DIR"_s, u"DBUS_SESSION_BUS_ADDRESS"_s})
            environment.remove(name);
        environment.insert(u"HOME"_s, place.path());
        if (!bus.isEmpty())
            environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus);
        return environment;
    }

    QProcess &launch(const QStringList &arguments, const QProcessEnvironment &environment) {
        auto &run = runs.emplace_back(std::make_unique<QProcess>());
        run->setProcessChannelMode(QProcess::MergedChannels);
        run->setProcessEnvironment(environment);
        run->start(program(), arguments);
        EXPECT_TRUE(run->waitForStarted());
        return *run;
    }

    /// Waits for the run's end, which is always an orderly one.
    static void expectEnd(QProcess &run) {
        ASSERT_TRUE(eventually([&] { return run.state() == QProcess::NotRunning; }, 60'000));
        EXPECT_EQ(run.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(run.exitCode(), 0);
        EXPECT_EQ(run.readAll(), QByteArray());
    }

    void expectNothingKept() const {
        EXPECT_EQ(loadSchedules(), QList{schedule});
        EXPECT_TRUE(ChatStore().rebuildIndex().isEmpty());
        EXPECT_FALSE(QFile::exists(enginePidFile()));
    }

    /// Runs the schedule, of which nothing comes and nobody learns.
    void expectNoTrace(const QUuid &id) {
        const PrivateBus bus;
        const NotificationService service(bus.address());
        expectEnd(start(id, bus.address()));
        EXPECT_TRUE(service.shown().isEmpty());
        expectNothingKept();
    }

    /// The engine of a run, once it is there; 0 if it doesn't come.
    static qint64 engineOf(const QProcess &run) {
        qint64 engine = 0;
        EXPECT_TRUE(eventually([&] {
            for (const qint64 child : childrenOf(run.processId())) {
                if (processPath(child).contains(u"llama-server"_s))
                    engine = child;
            }
            return engine != 0;
        }));
        return engine;
    }

    /// The engine that is written down as the program's, once it is there; 0 if it doesn't come.
    static qint64 notedEngineOf(const QProcess &program) {
        qint64 engine = 0;
        EXPECT_TRUE(eventually([&] {
            engine = readFile(enginePidFile()).value_or("0").toLongLong();
            return childrenOf(program.processId()).contains(engine);
        }));
        return engine;
    }

    /// Waits until the engine of a run has been at work for a while, as it is on an answer without an end.
    static bool isAtWork(qint64 engine) {
        const qint64 before = processorTicks(engine);
        return eventually([&] { return processorTicks(engine) > before + 100; }, 30'000);
    }

    TemporaryApplicationFolder folder;
    QTemporaryDir place;
    const Schedule schedule{.id = QUuid(u"6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11"_s),
                            .title = u"Morning"_s,
                            .prompt = u"Hello!"_s,
                            .recurrence = ScheduleRecurrence::daily,
                            .hour = 9,
                            .minute = 0,
                            .enabled = true,
                            .runInBackground = true};
    std::vector<std::unique_ptr<QProcess>> runs;
};

} // namespace

TEST_F(ScheduledRun, keepsAnAnswerOnAMachineWithoutADesktop) {
    const QDateTime begun = QDateTime::currentDateTimeUtc().addSecs(-1);
    QProcess &run = start(schedule.id);
    const qint64 engine = engineOf(run);
    expectEnd(run);
    EXPECT_FALSE(isAlive(engine));
    EXPECT_FALSE(QFile::exists(enginePidFile()));

    const QList<ConversationSummary> chats = ChatStore().list();
    ASSERT_EQ(chats.size(), 1);
    const Conversation chat = ChatStore().load(chats.first().id).value();
    EXPECT_EQ(chat.title, u"Morning"_s);
    ASSERT_EQ(chat.messages.size(), 2);
    EXPECT_EQ(chat.messages.first().content, u"Hello!"_s);
    EXPECT_FALSE(chat.messages.last().content.trimmed().isEmpty());
    EXPECT_FALSE(chat.messages.last().reasoning);
    const Schedule ran = loadSchedules().value(0);
    EXPECT_EQ(ran.lastChatId, chat.id);
    ASSERT_TRUE(ran.lastRun);
    EXPECT_GE(*ran.lastRun, begun);
}

TEST_F(ScheduledRun, tellsThePersonOnTheDesktop) {
    const PrivateBus bus;
    const NotificationService service(bus.address());
    expectEnd(start(schedule.id, bus.address()));
    ASSERT_EQ(service.shown().size(), 1);
    EXPECT_EQ(service.shown().first().title, u"Morning"_s);
    EXPECT_EQ(service.shown().first().body, u"Your scheduled run is ready."_s);
    EXPECT_EQ(ChatStore().list().size(), 1);
}

TEST_F(ScheduledRun, ofAScheduleThatHasGoneLeavesNoTrace) {
    expectNoTrace(QUuid::createUuid());
}

TEST_F(ScheduledRun, withoutAnInstalledModelLeavesNoTrace) {
    saveSettings({});
    expectNoTrace(schedule.id);
}

TEST_F(ScheduledRun, withoutTheModelsFileLeavesNoTrace) {
    QFile::remove(modelsFolder() + u'/' + demoTier().filename);
    expectNoTrace(schedule.id);
}

TEST_F(ScheduledRun, withoutAFolderTellsOfItsFailure) {
    const PrivateBus bus;
    const NotificationService service(bus.address());
    QFile inTheWay(place.filePath(u"data"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    const EnvironmentVariable elsewhere("XDG_DATA_HOME", inTheWay.fileName().toLocal8Bit());
    expectEnd(start(schedule.id, bus.address()));
    ASSERT_EQ(service.shown().size(), 1);
    EXPECT_EQ(service.shown().first().title, u"Scheduled run"_s);
    EXPECT_EQ(service.shown().first().body, failure);
}

TEST_F(ScheduledRun, onABusThatHangsEndsAllTheSame) {
    const SilentBus bus;
    expectEnd(start(schedule.id, bus.address()));
    EXPECT_EQ(ChatStore().list().size(), 1);
    EXPECT_FALSE(QFile::exists(enginePidFile()));
}

TEST_F(ScheduledRun, takesTheModelAsTheCatalogThatCameAlongHasIt) {
    const EndlessEngine endless;
    const auto contextLength = [](qint64 engine) {
        QFile file(u"/proc/%1/cmdline"_s.arg(engine));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QList<QByteArray> words = file.readAll().split('\0');
        return words.value(words.indexOf("-c") + 1).toLongLong();
    };
    const auto contextLengthOfARun = [&] {
        QProcess &run = start(schedule.id);
        const qint64 length = contextLength(engineOf(run));
        run.terminate();
        expectEnd(run);
        return length;
    };
    EXPECT_EQ(contextLengthOfARun(), demoTier().contextLength) << "no catalog knows it";
    QFile::remove(place.filePath(u"Contents"_s));
    QDir(place.path()).mkpath(u"Contents/Resources"_s);
    ModelTier tier = demoTier(QUrl(u"https://models.example/sprout.gguf"_s));
    tier.contextLength = 1024;
    writeAtomically(place.filePath(u"Contents/Resources/catalog.json"_s), encodeRecord(Catalog{1, {tier}}));
    EXPECT_EQ(contextLengthOfARun(), 1024);
}

TEST_F(ScheduledRun, onAFileThatIsNoModelTellsOfItsFailure) {
    const PrivateBus bus;
    const NotificationService service(bus.address());
    const QString model = modelsFolder() + u'/' + demoTier().filename;
    QFile::remove(model);
    QFile garbage(model);
    ASSERT_TRUE(garbage.open(QIODevice::WriteOnly));
    garbage.write("This is no model at all.");
    garbage.close();
    expectEnd(start(schedule.id, bus.address()));
    ASSERT_EQ(service.shown().size(), 1);
    EXPECT_EQ(service.shown().first().title, u"Scheduled run"_s);
    EXPECT_EQ(service.shown().first().body, failure);
    expectNothingKept();
}

TEST_F(ScheduledRun, whoseEngineIsKilledTellsOfItsFailure) {
    const PrivateBus bus;
    const NotificationService service(bus.address());
    const EndlessEngine endless;
    QProcess &run = start(schedule.id, bus.address());
    const qint64 engine = engineOf(run);
    ASSERT_TRUE(isAtWork(engine));
    killProcess(engine);
    expectEnd(run);
    ASSERT_EQ(service.shown().size(), 1);
    EXPECT_EQ(service.shown().first().body, failure);
    expectNothingKept();
}

TEST_F(ScheduledRun, whileAnotherGoesOnDoesNothing) {
    const PrivateBus bus;
    const NotificationService service(bus.address());
    const EndlessEngine endless;
    QProcess &first = start(schedule.id, bus.address());
    const qint64 engine = engineOf(first);
    ASSERT_TRUE(isAtWork(engine));
    expectEnd(start(schedule.id, bus.address()));
    EXPECT_TRUE(isAlive(engine));
    EXPECT_EQ(first.state(), QProcess::Running);
    EXPECT_TRUE(service.shown().isEmpty());

    first.terminate();
    expectEnd(first);
    EXPECT_FALSE(isAlive(engine));
    EXPECT_TRUE(service.shown().isEmpty());
    expectNothingKept();
}

TEST_F(ScheduledRun, ofTwoThatBeginAtOnceOneIsRun) {
    QProcess &one = start(schedule.id);
    QProcess &other = start(schedule.id);
    expectEnd(one);
    expectEnd(other);
    EXPECT_EQ(ChatStore().list().size(), 1);
}

TEST_F(ScheduledRun, whileTheProgramIsOpenDoesNothing) {
    const PrivateBus bus;
    const NotificationService service(bus.address());
    const qint64 engine = notedEngineOf(open(bus.address()));
    expectEnd(start(schedule.id, bus.address()));
    EXPECT_TRUE(isAlive(engine));
    EXPECT_EQ(readFile(enginePidFile()), QByteArray::number(engine));
    EXPECT_TRUE(service.shown().isEmpty());
    EXPECT_EQ(loadSchedules(), QList{schedule});
}

TEST_F(ScheduledRun, givesWayToTheProgramThatIsOpenedMeanwhile) {
    const PrivateBus bus;
    const NotificationService service(bus.address());
    const EndlessEngine endless;
    QProcess &run = start(schedule.id, bus.address());
    const qint64 engine = engineOf(run);
    ASSERT_TRUE(isAtWork(engine));
    const QProcess &opened = open(bus.address());
    expectEnd(run);
    EXPECT_FALSE(isAlive(engine));
    ASSERT_EQ(service.shown().size(), 1);
    EXPECT_EQ(service.shown().first().body, failure);
    EXPECT_TRUE(isAlive(notedEngineOf(opened)));
    EXPECT_EQ(loadSchedules(), QList{schedule});
}

TEST_F(ScheduledRun, thatIsKilledTakesItsEngineAlong) {
    const EndlessEngine endless;
    QProcess &run = start(schedule.id);
    const qint64 engine = engineOf(run);
    ASSERT_TRUE(isAtWork(engine));
    run.kill();
    ASSERT_TRUE(run.waitForFinished());
    EXPECT_TRUE(eventually([&] { return !isAlive(engine); }));
}
