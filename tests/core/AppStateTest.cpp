#include "core/AppState.h"

#include "engine/EngineProcessBox.h"
#include "platform/AtomicFile.h"
#include "platform/ChildProcess.h"
#include "platform/LoopbackPort.h"
#include "platform/Processes.h"
#include "records/ChatStore.h"
#include "records/Folders.h"
#include "records/Memory.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ManualClock.h"
#include "support/TemporaryApplicationFolder.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

class App : public ::testing::Test {
protected:
    App() { app = std::make_unique<AppState>(box, clock); }
    ~App() override { box.terminate(); }

    bool isReady() const { return std::holds_alternative<phase::Ready>(app->phase()); }

    void bootstrap() {
        app->bootstrap();
        EXPECT_TRUE(eventually([this] {
            clock.advance(std::chrono::milliseconds(500));
            return isReady() || std::holds_alternative<phase::Error>(app->phase());
        }));
    }

    QByteArray recordedModel() const { return readFile(record)->split('\n').at(1); }
    QByteArray recordedContext() const { return readFile(record)->split('\n').at(9); }

    TemporaryApplicationFolder folder;
    QString record = folder.dataHome() + u"/record"_s;
    EnvironmentVariable recording{"FAKE_SERVER_RECORD", record.toLocal8Bit()};
    EnvironmentVariable server{"OSTRELIN_LLAMA_SERVER", FAKE_SERVER_PATH};
    EnvironmentVariable behaviour{"FAKE_SERVER", "ready"};
    ManualClock clock;
    EngineProcessBox box;
    std::unique_ptr<AppState> app;
};

} // namespace

TEST_F(App, aColdStartGoesThroughItsPhasesToAReadyChat) {
    QStringList phases;
    QObject::connect(app.get(), &AppState::phaseChanged, app.get(),
                     [&] { phases.append(QString::number(app->phase().index())); });
    EXPECT_TRUE(std::holds_alternative<phase::Checking>(app->phase()));
    bootstrap();
    EXPECT_TRUE(isReady());
    EXPECT_EQ(phases.size(), 2) << "starting, ready";
    ASSERT_TRUE(app->chat().conversation());
    EXPECT_EQ(app->chat().summaries().size(), 1);
    EXPECT_EQ(ChatStore().load(app->chat().conversation()->id), *app->chat().conversation());
    EXPECT_TRUE(app->engineURL());
    EXPECT_EQ(app->engineKey().size(), 64);
}

TEST_F(App, withNothingInstalledTheDemoModelRuns) {
    bootstrap();
    EXPECT_TRUE(recordedModel().endsWith("/demo/sprout.gguf"));
}

TEST_F(App, theModelThatIsNamedBeatsEveryOther) {
    const QString model = folder.dataHome() + u"/mine.gguf"_s;
    writeAtomically(model, "x");
    const EnvironmentVariable named("OSTRELIN_MODEL_PATH", model.toLocal8Bit());
    bootstrap();
    EXPECT_EQ(recordedModel(), model.toLocal8Bit());
}

TEST_F(App, aNamedModelThatIsMissingIsNoMatter) {
    const EnvironmentVariable named("OSTRELIN_MODEL_PATH", "/nowhere.gguf");
    bootstrap();
    EXPECT_TRUE(recordedModel().endsWith("/demo/sprout.gguf"));
}

TEST_F(App, anInstalledModelRunsWithItsOwnSettings) {
    ensureFolders();
    writeAtomically(modelsFolder() + u"/big.gguf"_s, "x");
    Settings settings;
    settings.installed = InstalledModel{
        .tierId = u"big"_s,
        .displayName = u"Big"_s,
        .filename = u"big.gguf"_s,
        .contextLength = 16384,
        .sampling = {.temperature = 0.7, .topP = 0.8, .topK = 20, .minP = 0, .presencePenalty = 1.5},
        .thinkingSampling = {},
        .supportsTools = true,
        .license = u"MIT"_s,
        .sizeBytes = 1};
    saveSettings(settings);
    bootstrap();
    EXPECT_EQ(recordedModel(), (modelsFolder() + u"/big.gguf"_s).toLocal8Bit());
    EXPECT_EQ(recordedContext(), "16384");
    EXPECT_EQ(app->activeTier()->id, u"big"_s);
    EXPECT_EQ(app->activeTier()->requiredGPUBytes, 0);
    EXPECT_TRUE(app->activeTier()->sha256.isEmpty());
    EXPECT_EQ(app->settings(), settings);
}

TEST_F(App, anInstalledModelWhoseFileIsGoneIsNoMatter) {
    ensureFolders();
    Settings settings;
    settings.installed = InstalledModel();
    settings.installed->filename = u"gone.gguf"_s;
    saveSettings(settings);
    bootstrap();
    EXPECT_TRUE(recordedModel().endsWith("/demo/sprout.gguf"));
}

TEST_F(App, memoryAndSettingsAreRead) {
    writeMemory(u"- likes tea"_s);
    Settings settings;
    settings.theme = Theme::pink;
    saveSettings(settings);
    bootstrap();
    EXPECT_EQ(app->memory(), u"- likes tea"_s);
    EXPECT_EQ(app->settings().theme, Theme::pink);
}

TEST_F(App, aFolderThatCannotBeMadeIsAnError) {
    writeAtomically(folder.dataHome() + u"/Ostrelin"_s, "in the way");
    bootstrap();
    EXPECT_EQ(app->phase(), AppPhase(phase::Error{u"Ostrelin couldn't create its folder."_s, false}));
}

TEST_F(App, anEngineThatCannotStartIsAnErrorInItsOwnWordsAndCanBeTriedAgain) {
    qputenv("FAKE_SERVER", "exit no such model");
    bootstrap();
    EXPECT_EQ(app->phase(), AppPhase(phase::Error{u"no such model\nno such model"_s, false}));
    qputenv("FAKE_SERVER", "ready");
    app->resolveModel();
    EXPECT_TRUE(eventually([&] {
        clock.advance(std::chrono::milliseconds(500));
        return isReady();
    }));
}

TEST_F(App, aSecondBootstrapDoesNothing) {
    bootstrap();
    const QByteArray first = *readFile(enginePidFile());
    app->bootstrap();
    letPass(50);
    EXPECT_EQ(readFile(enginePidFile()), first);
    EXPECT_TRUE(isReady());
}

TEST_F(App, aServerLeftBehindIsEndedFirst) {
    ensureFolders();
    const ChildProcess orphan({.executable = QStringLiteral(FAKE_SERVER_PATH),
                               .arguments = {u"--port"_s, QString::number(*freeLoopbackPort())},
                               .environment = QProcessEnvironment::systemEnvironment(),
                               .onOutput = {},
                               .onError = {},
                               .onExit = {}});
    writeAtomically(enginePidFile(), QByteArray::number(orphan.processIdentifier()));
    bootstrap();
    EXPECT_FALSE(orphan.isRunning());
    EXPECT_TRUE(box.isRunning());
}

TEST_F(App, shuttingDownLeavesNoServerAndNoPidFile) {
    bootstrap();
    app->shutDown();
    EXPECT_FALSE(box.isRunning());
    EXPECT_FALSE(QFile::exists(enginePidFile()));
}

TEST_F(App, shuttingDownDuringTheStartLeavesNoServer) {
    qputenv("FAKE_SERVER", "loading 1000");
    app->bootstrap();
    ASSERT_TRUE(eventually([&] { return box.isRunning(); }));
    app->shutDown();
    app.reset();
    letPass(50);
    EXPECT_FALSE(box.isRunning());
}
