#include "e2e/EndlessEngine.h"
#include "e2e/ProcessStatus.h"
#include "platform/Processes.h"
#include "records/ChatStore.h"
#include "records/Folders.h"
#include "schedules/ScheduleStore.h"
#include "support/Await.h"
#include "support/DemoModel.h"
#include "support/NotificationService.h"
#include "support/PrivateBus.h"
#include "support/TemporaryApplicationFolder.h"

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
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const QString &name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s,
                                    u"XDG_RUNTIME_DIR"_s, u"DBUS_SESSION_BUS_ADDRESS"_s})
            environment.remove(name);
        environment.insert(u"HOME"_s, place.path());
        if (!bus.isEmpty())
            environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus);
        auto &run = runs.emplace_back(std::make_unique<QProcess>());
        run->setProcessChannelMode(QProcess::MergedChannels);
        run->setProcessEnvironment(environment);
        run->start(program(), {u"--run-schedule"_s, id.toString(QUuid::WithoutBraces)});
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
    const PrivateBus bus;
    const NotificationService service(bus.address());
    expectEnd(start(QUuid::createUuid(), bus.address()));
    EXPECT_TRUE(service.shown().isEmpty());
    expectNothingKept();
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

TEST_F(ScheduledRun, thatIsKilledTakesItsEngineAlong) {
    const EndlessEngine endless;
    QProcess &run = start(schedule.id);
    const qint64 engine = engineOf(run);
    ASSERT_TRUE(isAtWork(engine));
    run.kill();
    ASSERT_TRUE(run.waitForFinished());
    EXPECT_TRUE(eventually([&] { return !isAlive(engine); }));
}
