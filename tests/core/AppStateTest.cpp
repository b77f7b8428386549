#include "core/AppStateFixture.h"
#include "platform/ChildProcess.h"
#include "platform/LoopbackPort.h"
#include "platform/MemoryPressure.h"
#include "records/ChatStore.h"
#include "records/Memory.h"
#include "support/DiskRecord.h"

using namespace Qt::StringLiterals;

namespace {

const QByteArray modelBytes = "the weights of a model";

} // namespace

class AppStateTest : public AppStateFixture {
protected:
    const ModelTier small = tier(u"small"_s, modelBytes);

    static QString message(const AppPhase &phase) { return std::get<phase::Error>(phase).message; }
    static QString reason(const AppPhase &phase) { return std::get<phase::Unsupported>(phase).reason; }
};

TEST_F(AppStateTest, itBeginsByChecking) {
    EXPECT_EQ(app->phase(), AppPhase(phase::Checking{}));
    EXPECT_EQ(app->settings(), Settings());
    EXPECT_EQ(app->catalog(), Catalog());
    EXPECT_EQ(app->report(), MachineReport());
    EXPECT_FALSE(app->downloadProgress());
    EXPECT_FALSE(app->isDownloadPaused());
    EXPECT_FALSE(app->activeTier());
    EXPECT_FALSE(app->showsWhySize());
    EXPECT_FALSE(app->needsMoveToApplications());
    EXPECT_FALSE(app->diskNote());
    EXPECT_EQ(app->memory(), QString());
}

TEST_F(AppStateTest, aFolderThatCannotBeMadeIsAnError) {
    writeAtomically(folder.dataHome() + u"/Ostrelin"_s, "in the way");
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Error>());
    EXPECT_EQ(app->phase(), AppPhase(phase::Error{u"Ostrelin couldn't create its folder."_s, false}));
    EXPECT_TRUE(network.requests().isEmpty());
}

TEST_F(AppStateTest, oneThatCanBeMadeAfterAllBeginsTheStartAnew) {
    serveCatalog({small});
    writeAtomically(folder.dataHome() + u"/Ostrelin"_s, "in the way");
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Error>());
    ASSERT_TRUE(QFile::remove(folder.dataHome() + u"/Ostrelin"_s));
    app->resolveModel();
    ASSERT_TRUE(reaches<phase::Welcome>());
    EXPECT_EQ(app->catalog().tiers, QList{small});
    EXPECT_EQ(app->report(), machine);
}

TEST_F(AppStateTest, whatWasTypedWithoutAFolderOutlastsTheNewStart) {
    serveCatalog({small});
    writeAtomically(folder.dataHome() + u"/Ostrelin"_s, "in the way");
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Error>());
    app->saveMemory(u"- likes tea"_s);
    app->changeSetting(&Settings::theme, Theme::nearBlack);
    ASSERT_TRUE(QFile::remove(folder.dataHome() + u"/Ostrelin"_s));
    app->resolveModel();
    ASSERT_TRUE(reaches<phase::Welcome>());
    EXPECT_EQ(app->memory(), u"- likes tea"_s);
    EXPECT_EQ(readFile(memoryFile()), "- likes tea");
    EXPECT_EQ(app->settings().theme, Theme::nearBlack);
    EXPECT_EQ(loadSettings().theme, Theme::nearBlack);

    // From here on the file is as good as ever.
    writeAtomically(memoryFile(), "- likes milk");
    app->refreshMemory();
    EXPECT_EQ(app->memory(), u"- likes milk"_s);
}

TEST_F(AppStateTest, whatWasKeptInTheMissingFolderIsThereAgain) {
    serveCatalog({small});
    Settings kept;
    kept.theme = Theme::lightBlue;
    ensureFolders();
    ::saveSettings(kept);
    writeMemory(u"- drinks coffee"_s);
    const QString away = folder.dataHome() + u"/away"_s;
    ASSERT_TRUE(QDir().rename(applicationFolder(), away));
    writeAtomically(applicationFolder(), "in the way");
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Error>());
    app->saveMemory(u"- likes tea"_s);
    app->changeSetting(&Settings::textSize, TextSize::large);
    ASSERT_TRUE(QFile::remove(applicationFolder()));
    ASSERT_TRUE(QDir().rename(away, applicationFolder()));
    app->resolveModel();
    ASSERT_TRUE(reaches<phase::Welcome>());
    EXPECT_EQ(readFile(memoryFile()), "- drinks coffee\n- likes tea") << "neither is lost";
    EXPECT_EQ(app->settings(), kept) << "the file tells more than what was changed without it";
}

TEST_F(AppStateTest, aStartThatFailsWritesOverNothingThatWasKept) {
    Settings kept;
    kept.didFinishWelcome = true;
    ensureFolders();
    ::saveSettings(kept);
    writeMemory(u"Drinks tea"_s);
    ASSERT_TRUE(QDir(chatsFolder()).removeRecursively());
    writeAtomically(chatsFolder(), "in the way");

    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Error>());
    EXPECT_EQ(app->memory(), u"Drinks tea"_s);
    app->changeSetting(&Settings::theme, Theme::nearBlack);
    kept.theme = Theme::nearBlack;
    EXPECT_EQ(loadSettings(), kept);
}

TEST_F(AppStateTest, aPlaceThatWontStayIsTold) {
    serveCatalog({small});
    isInTemporaryLocation = true;
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Welcome>());
    EXPECT_TRUE(app->needsMoveToApplications());
}

TEST_F(AppStateTest, aMachineOfAnotherKindIsNotSupported) {
    machine.isAppleSilicon = false;
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Unsupported>());
    EXPECT_EQ(reason(app->phase()), u"Ostrelin runs on Apple Silicon Macs with 8 GB of memory or more."_s);
}

TEST_F(AppStateTest, aTranslatedProgramIsNotSupported) {
    machine.isRosetta = true;
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Unsupported>());
    EXPECT_EQ(reason(app->phase()), u"Ostrelin runs on Apple Silicon Macs with 8 GB of memory or more."_s);
}

TEST_F(AppStateTest, withoutAnyCatalogThereIsAnError) {
    // This test program has no catalog of its own beside it.
    network.answer(Script(500));
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Error>());
    EXPECT_EQ(app->phase(), AppPhase(phase::Error{u"Ostrelin couldn't read its model list."_s, false}));
}

TEST_F(AppStateTest, theFirstStartLeadsToTheWelcome) {
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Welcome>());
    EXPECT_EQ(phases, QStringList{u"welcome"_s});
    EXPECT_EQ(app->catalog().tiers, QList{small});
    EXPECT_EQ(app->report(), machine);
    EXPECT_TRUE(QDir(pagesFolder()).exists());
    EXPECT_FALSE(QFile::exists(settingsFile()));
}

TEST_F(AppStateTest, theWelcomeEndsWithASavedSettingAndGoesOnToTheModel) {
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Welcome>());
    network.answer(Script(200).raw(modelBytes));
    app->finishWelcome();
    EXPECT_TRUE(loadSettings().didFinishWelcome);
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(phases, (QStringList{u"welcome"_s, u"downloading"_s, u"starting"_s, u"ready"_s}));
}

TEST_F(AppStateTest, whereNoModelFitsThatIsTold) {
    seenWelcome();
    machine.gpuBudget = 0;
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Unsupported>());
    EXPECT_EQ(reason(app->phase()),
              u"Ostrelin needs more free space, or an Apple Silicon Mac with 8 GB of memory or more."_s);
}

TEST_F(AppStateTest, anInstalledModelRunsAsTheCatalogDescribesIt) {
    hasModel(small);
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(phases, (QStringList{u"starting"_s, u"ready"_s}));
    EXPECT_EQ(app->activeTier(), small);
    EXPECT_EQ(recordedModel(), (modelsFolder() + u"/small.gguf"_s).toLocal8Bit());
    EXPECT_EQ(recordedContext(), "4096");
    EXPECT_FALSE(app->chat().upgradeBanner());
}

TEST_F(AppStateTest, aModelThatLeftTheCatalogRunsAsItWasInstalled) {
    hasModel(tier(u"gone"_s, modelBytes));
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    const ModelTier active = app->activeTier().value();
    EXPECT_EQ(active.id, u"gone"_s);
    EXPECT_EQ(active.displayName, u"GONE"_s);
    EXPECT_TRUE(active.sha256.isEmpty());
    EXPECT_EQ(active.requiredGPUBytes, 0);
    EXPECT_EQ(active.minRAMBytes, 0);
    EXPECT_FALSE(active.mirrorURL);
    EXPECT_FALSE(active.gpuBytesProvisional);
    EXPECT_EQ(active.url, QUrl::fromLocalFile(modelsFolder() + u"/gone.gguf"_s));
    EXPECT_EQ(active.contextLength, 4096);
    EXPECT_FALSE(app->chat().upgradeBanner());
}

TEST_F(AppStateTest, anInstalledModelWhoseFileIsGoneIsDownloadedWithoutAWord) {
    hasModel(tier(u"gone"_s, modelBytes));
    QFile::remove(modelsFolder() + u"/gone.gguf"_s);
    EXPECT_FALSE(app->installedModelPath());
    serveCatalog({small});
    network.answer(Script(200).raw(modelBytes));
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Downloading>());
    EXPECT_EQ(app->settings().installed->tierId, u"gone"_s);
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(app->settings().installed->tierId, u"small"_s);
}

TEST_F(AppStateTest, theModelThatIsNamedBeatsEveryOtherAndLeavesTheSettingsAlone) {
    hasModel(small);
    const QString mine = folder.dataHome() + u"/mine.gguf"_s;
    writeAtomically(mine, "x");
    const EnvironmentVariable named("OSTRELIN_MODEL_PATH", mine.toLocal8Bit());
    serveCatalog({small, tier(u"last"_s, modelBytes)});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(recordedModel(), mine.toLocal8Bit());
    EXPECT_EQ(app->activeTier()->id, u"last"_s);
    EXPECT_EQ(app->settings().installed->tierId, u"small"_s);
}

TEST_F(AppStateTest, aNamedModelRunsAsTheForcedTier) {
    seenWelcome();
    const QString mine = folder.dataHome() + u"/mine.gguf"_s;
    writeAtomically(mine, "x");
    const EnvironmentVariable named("OSTRELIN_MODEL_PATH", mine.toLocal8Bit());
    const EnvironmentVariable forced("OSTRELIN_TIER", "sma");
    serveCatalog({small, tier(u"last"_s, modelBytes)});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(app->activeTier()->id, u"small"_s);
}

TEST_F(AppStateTest, aNamedModelThatIsMissingIsNoMatter) {
    hasModel(small);
    const EnvironmentVariable named("OSTRELIN_MODEL_PATH", "/nowhere.gguf");
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_TRUE(recordedModel().endsWith("/small.gguf"));
}

TEST_F(AppStateTest, aReadyProgramHasAChatAndTheListOfAll) {
    hasModel(small);
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    ASSERT_TRUE(app->chat().conversation());
    EXPECT_EQ(app->chat().summaries().size(), 1);
    EXPECT_EQ(ChatStore().load(app->chat().conversation()->id), *app->chat().conversation());
    EXPECT_TRUE(app->engineURL());
    EXPECT_EQ(app->engineKey().size(), 64);
    EXPECT_TRUE(app->chat().findChild<MemoryPressure *>()) << "somebody watches the machine's memory";
}

TEST_F(AppStateTest, aReadyEngineLeavesTheChatThatIsThere) {
    hasModel(small);
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    const QUuid chat = app->chat().conversation()->id;
    ASSERT_TRUE(restartsEngine());
    EXPECT_EQ(app->chat().conversation()->id, chat);
}

TEST_F(AppStateTest, whoSaysAlwaysMeansItEvenIfItCannotBeWritten) {
    ensureFolders();
    ASSERT_TRUE(QDir().mkpath(settingsFile() + u"/in the way"_s));
    app->changeSetting(&Settings::searchMode, SearchMode::always);
    EXPECT_EQ(app->settings().searchMode, SearchMode::always);
    EXPECT_EQ(loadSettings().searchMode, Settings().searchMode);
}

TEST_F(AppStateTest, anEngineThatCannotStartIsAnErrorInItsOwnWordsAndCanBeTriedAgain) {
    qputenv("FAKE_SERVER", "exit no such model");
    hasModel(small);
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Error>());
    EXPECT_EQ(app->phase(), AppPhase(phase::Error{u"no such model\nno such model"_s, false}));
    qputenv("FAKE_SERVER", "ready");
    app->resolveModel();
    EXPECT_TRUE(reaches<phase::Ready>());
}

TEST_F(AppStateTest, anEngineThatCannotStartMayDoBetterWithALighterModel) {
    qputenv("FAKE_SERVER", "exit too large");
    const ModelTier light = tier(u"light"_s, modelBytes);
    hasModel(small);
    serveCatalog({small, light});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Error>());
    EXPECT_TRUE(std::get<phase::Error>(app->phase()).canTryLighter);
    qputenv("FAKE_SERVER", "ready");
    network.answer(Script(200).raw(modelBytes));
    app->tryLighter();
    ASSERT_TRUE(isIn<phase::Downloading>(app->phase()));
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(app->activeTier(), light);
    app->tryLighter();
    EXPECT_TRUE(isIn<phase::Ready>(app->phase())) << "the lightest has none below it";
}

TEST_F(AppStateTest, withoutAModelThereIsNoLighterOne) {
    app->tryLighter();
    EXPECT_TRUE(isIn<phase::Checking>(app->phase()));
}

TEST_F(AppStateTest, aSecondBootstrapDoesNothing) {
    hasModel(small);
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    const QByteArray first = *readFile(enginePidFile());
    app->bootstrap();
    letPass(50);
    EXPECT_EQ(readFile(enginePidFile()), first);
    EXPECT_EQ(network.requests().size(), 1);
    EXPECT_EQ(phases, (QStringList{u"starting"_s, u"ready"_s}));
}

TEST_F(AppStateTest, memoryAndSettingsAreRead) {
    seenWelcome();
    writeMemory(u"- likes tea"_s);
    Settings settings = loadSettings();
    settings.theme = Theme::pink;
    saveSettings(settings);
    machine.gpuBudget = 0;
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Unsupported>());
    EXPECT_EQ(app->memory(), u"- likes tea"_s);
    EXPECT_EQ(app->settings().theme, Theme::pink);
}

TEST_F(AppStateTest, whatAnotherProgramWritesIntoTheMemoryIsTakenOver) {
    ensureFolders();
    app->saveMemory(u"- likes tea"_s);
    int changes = 0;
    QObject::connect(app.get(), &AppState::memoryChanged, app.get(), [&] { ++changes; });
    app->refreshMemory();
    EXPECT_EQ(changes, 0);
    writeMemory(u"- likes milk"_s);
    app->refreshMemory();
    EXPECT_EQ(app->memory(), u"- likes milk"_s);
    QFile::remove(memoryFile());
    app->refreshMemory();
    EXPECT_EQ(app->memory(), QString());
    EXPECT_EQ(changes, 2);
}

TEST_F(AppStateTest, whatCouldNotBeWrittenIsNotForgottenForTheFile) {
    ensureFolders();
    ASSERT_TRUE(QDir().mkpath(memoryFile() + u"/in the way"_s));
    app->saveMemory(u"- likes tea"_s);
    app->refreshMemory();
    EXPECT_EQ(app->memory(), u"- likes tea"_s);
}

TEST_F(AppStateTest, changedSettingsAreToldOfAndWritten) {
    ensureFolders();
    int changes = 0;
    QObject::connect(app.get(), &AppState::settingsChanged, app.get(), [&] { ++changes; });
    Settings settings;
    settings.theme = Theme::nearBlack;
    app->saveSettings(settings);
    app->saveSettings(settings);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(loadSettings(), settings);
}

TEST_F(AppStateTest, aServerLeftBehindIsEndedFirst) {
    seenWelcome();
    const ChildProcess orphan({.executable = QStringLiteral(FAKE_SERVER_PATH),
                               .arguments = {u"--port"_s, QString::number(*freeLoopbackPort())},
                               .environment = QProcessEnvironment::systemEnvironment(),
                               .onOutput = {},
                               .onError = {},
                               .onExit = {}});
    writeAtomically(enginePidFile(), QByteArray::number(orphan.processIdentifier()));
    serveCatalog({small});
    app->bootstrap();
    EXPECT_TRUE(eventually([&] { return !orphan.isRunning(); }));
    EXPECT_FALSE(QFile::exists(enginePidFile()));
}

TEST_F(AppStateTest, aBetterModelIsOfferedAfterTheStart) {
    hasModel(small);
    serveCatalog({tier(u"large"_s, modelBytes), small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_TRUE(settles([&] { return app->chat().upgradeBanner().has_value(); }));
    EXPECT_TRUE(app->chat().upgradeBanner()->startsWith(u"Your Mac can run a smarter version"_s));
    network.answer(Script(200).raw(modelBytes));
    app->acceptUpgrade();
    EXPECT_TRUE(isIn<phase::Downloading>(app->phase()));
    EXPECT_FALSE(app->chat().upgradeBanner());
    EXPECT_FALSE(box.isRunning());
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(app->activeTier()->id, u"large"_s);
    EXPECT_FALSE(QFile::exists(modelsFolder() + u"/small.gguf"_s));
    app->acceptUpgrade();
    EXPECT_TRUE(isIn<phase::Ready>(app->phase())) << "there is nothing better";
}

TEST_F(AppStateTest, anOfferEndsWithTheChoiceOfAnyModel) {
    const ModelTier large = tier(u"large"_s, modelBytes);
    hasModel(small);
    serveCatalog({large, small});
    app->bootstrap();
    ASSERT_TRUE(settles([&] { return app->chat().upgradeBanner().has_value(); }));
    network.answer(Script(200).raw(modelBytes));
    app->switchModel(large);
    EXPECT_FALSE(app->chat().upgradeBanner());
    EXPECT_TRUE(reaches<phase::Ready>());
    EXPECT_FALSE(app->chat().upgradeBanner());
}

TEST_F(AppStateTest, anOfferThatIsTurnedDownIsRemembered) {
    hasModel(small);
    serveCatalog({tier(u"large"_s, modelBytes), small});
    app->bootstrap();
    ASSERT_TRUE(settles([&] { return app->chat().upgradeBanner().has_value(); }));
    app->dismissUpgrade();
    EXPECT_FALSE(app->chat().upgradeBanner());
    EXPECT_EQ(loadSettings().dismissedUpgradeTierId, u"large"_s);
    app->refreshUpgradeOffer();
    EXPECT_FALSE(app->chat().upgradeBanner());
}

TEST_F(AppStateTest, aDeletedModelIsLookedForAnew) {
    hasModel(small);
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    app->chat().setUpgradeBanner(u"old"_s);
    network.answer(Script(200).raw(modelBytes).hold());
    app->deleteModel();
    EXPECT_FALSE(box.isRunning());
    EXPECT_FALSE(loadSettings().installed);
    EXPECT_FALSE(app->chat().upgradeBanner());
    EXPECT_TRUE(isIn<phase::Downloading>(app->phase()));
    EXPECT_FALSE(QFile::exists(modelsFolder() + u"/small.gguf"_s));
    ASSERT_TRUE(eventually(
        [&] { return QFileInfo(modelsFolder() + u"/small.gguf.partial"_s).size() == modelBytes.size(); }));
    network.goOn();
    EXPECT_TRUE(reaches<phase::Ready>());
}

TEST_F(AppStateTest, whoTypesDoesNotWaitForTheDisk) {
    ensureFolders();
    const DiskRecord disk;
    const auto flushes = [] {
        QByteArrayList orders = DiskRecord::orders();
        orders.removeIf([](const QByteArray &order) { return !order.startsWith("flush "); });
        return orders;
    };
    for (const QString &text : {u"- likes t"_s, u"- likes te"_s, u"- likes tea"_s}) {
        app->typeMemory(text);
        EXPECT_EQ(app->memory(), text);
        EXPECT_EQ(readFile(memoryFile()), text.toUtf8()) << "the end of the program would lose nothing";
    }
    EXPECT_EQ(flushes(), QByteArrayList());
    app->flushMemory();
    const QByteArrayList both{"flush " + memoryFile().toUtf8(), "flush " + applicationFolder().toUtf8()};
    EXPECT_EQ(flushes(), both);
    app->flushMemory();
    EXPECT_EQ(flushes(), both) << "there is nothing new";
    app->typeMemory(u"- likes milk"_s);
    app->shutDown();
    EXPECT_EQ(flushes(), both + both);
}

TEST_F(AppStateTest, theDiskHasWhatIsTypedASecondLater) {
    ensureFolders();
    const DiskRecord disk;
    const auto flushes = [] { return DiskRecord::orders().count("flush " + memoryFile().toUtf8()); };
    app->typeMemory(u"- likes t"_s);
    clock.advance(std::chrono::milliseconds(600));
    app->typeMemory(u"- likes tea"_s);
    EXPECT_EQ(flushes(), 0);
    clock.advance(std::chrono::milliseconds(400));
    EXPECT_TRUE(eventually([&] { return flushes() == 1; }));
    clock.advance(std::chrono::seconds(5));
    letPass(20);
    EXPECT_EQ(flushes(), 1) << "nothing has been typed since";
    app->typeMemory(u"- likes milk"_s);
    clock.advance(std::chrono::seconds(1));
    EXPECT_TRUE(eventually([&] { return flushes() == 2; }));
}

TEST_F(AppStateTest, memoryThatCouldNotBeWrittenIsWrittenAtTheEnd) {
    app->bootstrap();
    ASSERT_TRUE(eventually([this] { return QFile::exists(modelsFolder()); }));
    ASSERT_TRUE(QDir().mkdir(memoryFile()));
    app->saveMemory(u"- likes tea"_s);
    EXPECT_EQ(app->memory(), u"- likes tea"_s);
    ASSERT_TRUE(QDir().rmdir(memoryFile()));
    app->shutDown();
    EXPECT_EQ(readFile(memoryFile()), "- likes tea");
}

TEST_F(AppStateTest, shuttingDownLeavesNoServerAndNoPidFile) {
    hasModel(small);
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    app->shutDown();
    EXPECT_FALSE(box.isRunning());
    EXPECT_FALSE(QFile::exists(enginePidFile()));
}

TEST_F(AppStateTest, shuttingDownDuringTheStartLeavesNoServer) {
    qputenv("FAKE_SERVER", "loading 1000");
    hasModel(small);
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(eventually([&] { return box.isRunning(); }));
    app->shutDown();
    app.reset();
    letPass(50);
    EXPECT_FALSE(box.isRunning());
}

TEST_F(AppStateTest, theProgramMayEndWhileTheCatalogIsOnItsWay) {
    network.answer(Script::silence());
    app->bootstrap();
    letPass(20);
    app->shutDown();
    app.reset();
    EXPECT_TRUE(eventually([&] { return network.openConnections() == 0; }));
}
