#include "schedules/HeadlessRun.h"

#include "platform/AtomicFile.h"
#include "platform/FolderLock.h"
#include "records/ChatStore.h"
#include "records/Coder.h"
#include "records/Folders.h"
#include "records/Memory.h"
#include "records/Settings.h"
#include "schedules/Samples.h"
#include "schedules/ScheduleStore.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ManualClock.h"
#include "support/ScriptedEngine.h"
#include "support/TemporaryApplicationFolder.h"

#include <QFile>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace {

const QString failure = u"Scheduled run: A scheduled run could not finish."_s;

/// A run on a machine with a model and the sample schedule, which is neither enabled nor in the background.
/// The engine's executable is a stand-in.
class HeadlessRunTest : public ::testing::Test {
protected:
    HeadlessRunTest() {
        ensureFolders();
        Settings settings;
        settings.installed = InstalledModel{
            .tierId = u"gone"_s,
            .displayName = u"Gone"_s,
            .filename = u"model.gguf"_s,
            .contextLength = 2222,
            .sampling = {.temperature = 0.5, .topP = 0.25, .topK = 7, .minP = 0.125, .presencePenalty = 1},
            .thinkingSampling = {},
            .supportsTools = true,
            .license = u"MIT"_s,
            .sizeBytes = 5};
        saveSettings(settings);
        writeAtomically(modelPath(), "model");
        schedule.enabled = false;
        saveSchedules({schedule});
    }

    ~HeadlessRunTest() override { box.terminate(); }

    static QString modelPath() { return modelsFolder() + u"/model.gguf"_s; }

    void run(const QUuid &id) {
        await(runHeadlessSchedule(id,
                                  {.box = box,
                                   .clock = clock,
                                   .anotherInstanceRuns = [this] { return others(); },
                                   .postNotification =
                                       [this](const QString &title, const QString &body, std::stop_token) {
                                           told.append(title + u": "_s + body);
                                           return nothing();
                                       }},
                                  {}));
    }

    void run() { run(schedule.id); }

    /// The run on an engine that says what the test wants.
    void runOn(const ScriptedEngine &engine) {
        const EnvironmentVariable url("OSTRELIN_ENGINE_URL", engine.url().toEncoded());
        const EnvironmentVariable key("OSTRELIN_API_KEY", "secret");
        run();
    }

    void expectNothingKept() const {
        EXPECT_EQ(loadSchedules(), QList{schedule});
        EXPECT_TRUE(ChatStore().rebuildIndex().isEmpty());
        EXPECT_FALSE(box.isRunning());
    }

    bool wasStarted() const { return QFile::exists(record); }

    static Script answer(const QJsonObject &message) {
        const QJsonObject choice{{u"index"_s, 0}, {u"message"_s, message}};
        return Script().raw(encodeText(QJsonObject{{u"choices"_s, QJsonArray{choice}}}));
    }

    static Script answer(const QString &content) { return answer(QJsonObject{{u"content"_s, content}}); }

    TemporaryApplicationFolder folder;
    EnvironmentVariable server{"OSTRELIN_LLAMA_SERVER", FAKE_SERVER_PATH};
    EnvironmentVariable behaviour{"FAKE_SERVER", "ready"};
    QString record = folder.dataHome() + u"/record"_s;
    EnvironmentVariable recording{"FAKE_SERVER_RECORD", record.toLocal8Bit()};
    Schedule schedule = sampleSchedule();
    ManualClock clock{ManualClock::Sleep::skipped};
    EngineProcessBox box;
    std::function<bool()> others = [] { return false; };
    QStringList told;

    static Task<> nothing() { co_return; }
};

} // namespace

TEST_F(HeadlessRunTest, theAnswerIsKeptAsAChatAndTold) {
    ScriptedEngine engine;
    engine.answer(answer(u"The weather."_s));
    runOn(engine);
    EXPECT_EQ(told, QStringList{u"Morning: Your scheduled run is ready."_s});

    const QList<ConversationSummary> chats = ChatStore().list();
    ASSERT_EQ(chats.size(), 1);
    const Conversation chat = ChatStore().load(chats.first().id).value();
    EXPECT_EQ(chat.title, u"Morning"_s);
    EXPECT_EQ(chat.createdAt, clock.now());
    EXPECT_EQ(chat.updatedAt, clock.now());
    EXPECT_FALSE(chat.droppedCount);
    ASSERT_EQ(chat.messages.size(), 2);
    EXPECT_EQ(
        chat.messages.first(),
        (Message{.id = chat.messages.first().id, .role = Role::user, .content = u"What is good today?"_s}));
    EXPECT_EQ(
        chat.messages.last(),
        (Message{.id = chat.messages.last().id, .role = Role::assistant, .content = u"The weather."_s}));

    Schedule expected = schedule;
    expected.lastRun = clock.now();
    expected.lastChatId = chat.id;
    EXPECT_EQ(loadSchedules(), QList{expected});
}

TEST_F(HeadlessRunTest, oneQuestionIsAskedWithoutToolsAndInOnePiece) {
    ScriptedEngine engine;
    engine.answer(answer(u"The weather."_s));
    writeMemory(u" likes tea \n"_s);
    runOn(engine);
    ASSERT_EQ(engine.requests().size(), 1);
    const ScriptedEngine::Request request = engine.requests().first();
    EXPECT_EQ(request.line, "POST /v1/chat/completions HTTP/1.1");
    EXPECT_EQ(request.headers.value("authorization"), "Bearer secret");
    const QJsonObject body = request.json();
    EXPECT_EQ(body[u"max_tokens"_s], 2048);
    EXPECT_EQ(body[u"stream"_s], false);
    EXPECT_FALSE(body.contains(u"tools"_s));
    EXPECT_EQ(body[u"temperature"_s], 0.5);
    EXPECT_EQ(body[u"top_p"_s], 0.25);
    EXPECT_EQ(body[u"top_k"_s], 7);
    EXPECT_EQ(body[u"min_p"_s], 0.125);
    EXPECT_EQ(body[u"presence_penalty"_s], 1);
    const QString date = QLocale::system().toString(clock.now().toLocalTime().date(), QLocale::LongFormat);
    const QJsonArray expected{
        QJsonObject{{u"role"_s, u"system"_s},
                    {u"content"_s,
                     u"You are Ostrelin, a helpful assistant running entirely on the user's Mac.\n"
                     "Today's date is "_s +
                         date +
                         u". Your knowledge has a cutoff and may be out of date.\n"
                         "You cannot access the internet. If asked about recent events, say so.\n"
                         "Never claim to have searched unless a search result is present.\n"
                         "Be concise, warm, and use Markdown when helpful.\n\n"
                         "Things you remember about the user, written in their own memory file. Use them "
                         "when relevant, and call remember to suggest a new durable fact (the user "
                         "approves it first):\nlikes tea"_s}},
        QJsonObject{{u"role"_s, u"user"_s}, {u"content"_s, u"What is good today?"_s}}};
    EXPECT_EQ(body[u"messages"_s], expected);
}

TEST_F(HeadlessRunTest, theMemoryIsLeftOutWhereThePersonWantsThat) {
    ScriptedEngine engine;
    engine.answer(answer(u"The weather."_s));
    writeMemory(u"likes tea"_s);
    Settings settings = loadSettings();
    settings.memoryEnabled = false;
    settings.searchMode = SearchMode::always;
    saveSettings(settings);
    runOn(engine);
    const QByteArray body = engine.requests().first().body;
    EXPECT_FALSE(body.contains("likes tea"));
    EXPECT_FALSE(body.contains("web_search"));
    EXPECT_TRUE(body.contains("You cannot access the internet."));
}

TEST_F(HeadlessRunTest, whatTheModelThoughtIsNotKept) {
    ScriptedEngine engine;
    engine.answer(answer(QJsonObject{{u"content"_s, u"Tea."_s}, {u"reasoning_content"_s, u"Hm."_s}}));
    runOn(engine);
    const QUuid id = ChatStore().list().value(0).id;
    EXPECT_FALSE(readFile(chatFile(id)).value().contains("reasoning"));
    EXPECT_EQ(ChatStore().load(id)->messages.last().content, u"Tea."_s);
}

TEST_F(HeadlessRunTest, anAnswerWithoutATextIsAnEmptyOne) {
    ScriptedEngine engine;
    engine.answer(answer(QJsonObject{{u"content"_s, QJsonValue::Null}}));
    runOn(engine);
    EXPECT_EQ(told, QStringList{u"Morning: Your scheduled run is ready."_s});
    EXPECT_EQ(ChatStore().load(ChatStore().list().value(0).id)->messages.last().content, QString());
}

TEST_F(HeadlessRunTest, aScheduleWithoutATitleHasAName) {
    ScriptedEngine engine;
    engine.answer(answer(u"The weather."_s));
    schedule.title.clear();
    saveSchedules({schedule});
    runOn(engine);
    EXPECT_EQ(told, QStringList{u"Scheduled run: Your scheduled run is ready."_s});
    EXPECT_EQ(ChatStore().list().value(0).title, u"Scheduled run"_s);
    EXPECT_EQ(loadSchedules().first().title, QString());
}

TEST_F(HeadlessRunTest, theOtherSchedulesStayAsTheyAre) {
    ScriptedEngine engine;
    engine.answer(answer(u"The weather."_s));
    Schedule other = schedule;
    other.id = QUuid::createUuid();
    saveSchedules({other, schedule, other});
    runOn(engine);
    EXPECT_EQ(loadSchedules().first(), other);
    EXPECT_EQ(loadSchedules().last(), other);
    EXPECT_TRUE(loadSchedules().at(1).lastRun);
}

TEST_F(HeadlessRunTest, settingsThatCannotBeReadKnowOfNoModel) {
    writeAtomically(settingsFile(), "{");
    run();
    EXPECT_TRUE(told.isEmpty());
    expectNothingKept();
}

TEST_F(HeadlessRunTest, whileAnotherInstanceRunsNothingIsTouched) {
    writeAtomically(enginePidFile(), "of the other one");
    others = [] { return true; };
    run();
    EXPECT_TRUE(told.isEmpty());
    EXPECT_FALSE(wasStarted());
    EXPECT_EQ(readFile(enginePidFile()), "of the other one");
    expectNothingKept();
}

TEST_F(HeadlessRunTest, anotherRunThatLeavesIsWaitedFor) {
    ScriptedEngine engine;
    engine.answer(answer(u"The weather."_s));
    int looks = 0;
    others = [&looks] { return ++looks < 4; };
    runOn(engine);
    EXPECT_EQ(told, QStringList{u"Morning: Your scheduled run is ready."_s});
}

TEST_F(HeadlessRunTest, ofRunsThatBeginAtOnceOneGoesOn) {
    const FolderLock takenByAnotherRun(applicationFolder());
    int looks = 0;
    others = [&looks] { return ++looks < 4; };
    run();
    EXPECT_TRUE(told.isEmpty());
    EXPECT_FALSE(wasStarted());
    expectNothingKept();
}

TEST_F(HeadlessRunTest, foldersThatCannotBeMadeAreTold) {
    const QString home = folder.dataHome() + u"/file"_s;
    writeAtomically(home, "in the way");
    const EnvironmentVariable elsewhere("XDG_DATA_HOME", home.toLocal8Bit());
    run();
    EXPECT_EQ(told, QStringList{failure});
    EXPECT_FALSE(wasStarted());
}

TEST_F(HeadlessRunTest, withoutAnInstalledModelNothingHappens) {
    saveSettings({});
    run();
    EXPECT_TRUE(told.isEmpty());
    EXPECT_FALSE(wasStarted());
    expectNothingKept();
}

TEST_F(HeadlessRunTest, withoutTheModelsFileNothingHappens) {
    QFile::remove(modelPath());
    run();
    EXPECT_TRUE(told.isEmpty());
    EXPECT_FALSE(wasStarted());
    expectNothingKept();
}

TEST_F(HeadlessRunTest, aScheduleThatHasGoneIsNotRun) {
    run(QUuid::createUuid());
    EXPECT_TRUE(told.isEmpty());
    EXPECT_FALSE(wasStarted());
    expectNothingKept();
}

TEST_F(HeadlessRunTest, anEngineThatDoesNotStartIsToldAndGone) {
    const EnvironmentVariable broken("FAKE_SERVER", "exit no such model");
    run();
    EXPECT_EQ(told, QStringList{failure});
    EXPECT_TRUE(wasStarted());
    expectNothingKept();
    EXPECT_FALSE(QFile::exists(enginePidFile()));
}

TEST_F(HeadlessRunTest, anEngineThatNeverGetsReadyIsToldAndGone) {
    const EnvironmentVariable stuck("FAKE_SERVER", "never");
    run();
    EXPECT_EQ(told, QStringList{failure});
    expectNothingKept();
    EXPECT_FALSE(QFile::exists(enginePidFile()));
}

TEST_F(HeadlessRunTest, anEngineWithoutAnExecutableIsTold) {
    const EnvironmentVariable nowhere("OSTRELIN_LLAMA_SERVER", "/nowhere/llama-server");
    run();
    EXPECT_EQ(told, QStringList{failure});
    expectNothingKept();
}

TEST_F(HeadlessRunTest, aGenerationThatFailsIsToldAndNothingIsKept) {
    for (const Script &script : {Script(500), Script(401), Script().raw("no JSON"), Script::hangUp(),
                                 Script().raw("{\"choices\"").drop()}) {
        ScriptedEngine engine;
        engine.answer(script);
        told.clear();
        runOn(engine);
        EXPECT_EQ(told, QStringList{failure});
        expectNothingKept();
    }
}

TEST_F(HeadlessRunTest, theServerIsStartedWithTheInstalledModelAndEnded) {
    // The stand-in gets ready and answers with an empty body, which is no JSON.
    run();
    EXPECT_EQ(told, QStringList{failure});
    const QList<QByteArray> lines = readFile(record).value_or(QByteArray()).split('\n');
    EXPECT_EQ(lines.value(1), modelPath().toLocal8Bit());
    EXPECT_EQ(lines.value(9), "2222");
    EXPECT_FALSE(box.isRunning());
    EXPECT_FALSE(QFile::exists(enginePidFile()));
}

TEST_F(HeadlessRunTest, aServerThatAnEarlierRunLeftIsEnded) {
    const ChildProcess left({.executable = QStringLiteral(FAKE_SERVER_PATH),
                             .arguments = {u"--port"_s, u"0"_s},
                             .environment = QProcessEnvironment::systemEnvironment(),
                             .onOutput = {},
                             .onError = {},
                             .onExit = {}});
    writeAtomically(enginePidFile(), QByteArray::number(left.processIdentifier()));
    run();
    EXPECT_TRUE(eventually([&] { return !left.isRunning(); }));
}

namespace {

/// A run on an engine that never gets ready, in the middle of its wait for that.
class WaitingRun : public HeadlessRunTest {
protected:
    WaitingRun() {
        begin();
        EXPECT_TRUE(isAsked());
    }

    void begin() {
        watch(runHeadlessSchedule(schedule.id,
                                  {.box = box,
                                   .clock = standing,
                                   .anotherInstanceRuns = [this] { return isOpened; },
                                   .postNotification =
                                       [this](const QString &title, const QString &body, std::stop_token) {
                                           told.append(title + u": "_s + body);
                                           return nothing();
                                       }},
                                  stop.get_token()));
    }

    /// Lets the engine's time pass until it has been asked for its health.
    bool isAsked() {
        return eventually([this] {
            standing.advance(std::chrono::milliseconds(500));
            return QFile::exists(answers);
        });
    }

    Task<> watch(Task<> task) {
        try {
            co_await task;
        } catch (const Cancelled &) {
            wasCancelled = true;
        }
        hasEnded = true;
    }

    /// The same with the run that another one keeps waiting.
    void beginBehindAnother() {
        stop.request_stop();
        ASSERT_TRUE(eventually([this] { return hasEnded; }));
        hasEnded = false;
        stop = std::stop_source();
        isOpened = true;
        begin();
    }

    /// Lets the engine's time pass until the run is over.
    bool ends() {
        return eventually([this] {
            standing.advance(std::chrono::milliseconds(500));
            return hasEnded;
        });
    }

    EnvironmentVariable stuck{"FAKE_SERVER", "never"};
    QString answers = folder.dataHome() + u"/answers"_s;
    EnvironmentVariable counting{"FAKE_SERVER_COUNT", answers.toLocal8Bit()};
    ManualClock standing;
    std::stop_source stop;
    bool isOpened = false;
    bool wasCancelled = false;
    bool hasEnded = false;
};

} // namespace

TEST_F(WaitingRun, givesWayToTheProgramThatIsOpenedMeanwhile) {
    // That ends the server; there is no second one then.
    isOpened = true;
    killProcess(readFile(enginePidFile()).value_or("0").toLongLong());
    ASSERT_TRUE(eventually([this] { return !box.isRunning(); }));
    QFile::remove(answers);
    ASSERT_TRUE(ends());
    EXPECT_EQ(told, QStringList{failure});
    EXPECT_FALSE(QFile::exists(answers)) << "a second one was asked";
    expectNothingKept();
}

TEST_F(WaitingRun, waitsForAnotherInstanceNoLongerThanItHasTo) {
    beginBehindAnother();
    letPass(50);
    EXPECT_FALSE(hasEnded);
    stop.request_stop();
    EXPECT_TRUE(eventually([this] { return hasEnded; }));
    expectNothingKept();
}

TEST_F(WaitingRun, triesASecondTimeWhereNobodyElseIsThere) {
    killProcess(readFile(enginePidFile()).value_or("0").toLongLong());
    ASSERT_TRUE(eventually([this] { return !box.isRunning(); }));
    QFile::remove(answers);
    ASSERT_TRUE(isAsked());
    stop.request_stop();
    ASSERT_TRUE(ends());
}

TEST_F(WaitingRun, endsWithoutAWordWhenItIsStopped) {
    EXPECT_TRUE(box.isRunning());
    stop.request_stop();
    ASSERT_TRUE(eventually([this] { return hasEnded; }));
    EXPECT_TRUE(wasCancelled);
    EXPECT_TRUE(told.isEmpty());
    expectNothingKept();
}
