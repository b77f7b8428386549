#include "core/AppStateFixture.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

class AppStateDownloadTest : public AppStateFixture {
protected:
    /// Starts the program of a person who has seen the welcome screen, up to a download that holds in the
    /// middle.
    void beginDownload(const QList<ModelTier> &tiers) {
        seenWelcome();
        serveCatalog(tiers);
        network.answer(Script(200).raw(bytes.first(bytes.size() / 2)).hold());
        app->bootstrap();
        ASSERT_TRUE(reaches<phase::Downloading>());
        ASSERT_TRUE(eventually([this] { return partialSize() == bytes.size() / 2; }));
    }

    qint64 partialSize() const { return QFileInfo(modelsFolder() + u"/small.gguf.partial"_s).size(); }

    const QByteArray bytes = QByteArray("weights ").repeated(8000);
    const ModelTier small = tier(u"small"_s, bytes);
    const ModelTier light = tier(u"light"_s, bytes);
};

TEST_F(AppStateDownloadTest, aModelArrivesIsInstalledAndRuns) {
    ensureFolders();
    writeAtomically(modelsFolder() + u"/old.gguf"_s, "old");
    writeAtomically(modelsFolder() + u"/other.gguf.partial"_s, "half");
    seenWelcome();
    serveCatalog({small});
    network.answer(Script(200).raw(bytes));
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(phases, (QStringList{u"downloading"_s, u"starting"_s, u"ready"_s}));
    EXPECT_EQ(filesIn(modelsFolder()),
              (QStringList{u"CACHEDIR.TAG"_s, u"other.gguf.partial"_s, u"small.gguf"_s}))
        << "other models go; what is half downloaded, and what keeps the folder out of backups, stays";
    EXPECT_EQ(readFile(modelsFolder() + u"/small.gguf"_s), bytes);
    const InstalledModel installed = loadSettings().installed.value();
    EXPECT_EQ(installed.tierId, u"small"_s);
    EXPECT_EQ(installed.displayName, u"SMALL"_s);
    EXPECT_EQ(installed.filename, u"small.gguf"_s);
    EXPECT_EQ(installed.contextLength, 4096);
    EXPECT_EQ(installed.sizeBytes, bytes.size());
    EXPECT_TRUE(installed.supportsTools);
    EXPECT_EQ(installed.license, u"MIT"_s);
    EXPECT_EQ(app->installedModelPath(), modelsFolder() + u"/small.gguf"_s);
    EXPECT_EQ(recordedModel(), (modelsFolder() + u"/small.gguf"_s).toLocal8Bit());
}

TEST_F(AppStateDownloadTest, theMachineStaysAwakeMeanwhile) {
    beginDownload({small});
    EXPECT_EQ(reasons, QStringList{u"Downloading Ostrelin model"_s});
    EXPECT_FALSE(stillAwake.expired());
    network.goOn();
    ASSERT_TRUE(reaches<phase::Error>()) << "half a file is not the file";
    EXPECT_TRUE(stillAwake.expired());
}

TEST_F(AppStateDownloadTest, itStaysAwakeUntilTheEngineIsReadyAndNoLonger) {
    seenWelcome();
    serveCatalog({small});
    network.answer(Script(200).raw(bytes));
    QStringList awake;
    QObject::connect(app.get(), &AppState::phaseChanged, app.get(), [&] {
        if (!stillAwake.expired())
            awake.append(name());
    });
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(awake, (QStringList{u"starting"_s, u"ready"_s}));
    EXPECT_TRUE(eventually([&] { return stillAwake.expired(); }));
}

TEST_F(AppStateDownloadTest, progressIsToldAndIsTheScreensToShow) {
    const QSignalSpy told(app.get(), &AppState::downloadProgressChanged);
    beginDownload({small});
    EXPECT_TRUE(eventually([&] { return app->downloadProgress().has_value(); }));
    EXPECT_EQ(app->downloadProgress()->total, bytes.size());
    EXPECT_GT(told.count(), 0);
    EXPECT_EQ(app->activeTier(), small);
    EXPECT_EQ(app->pendingTier(), small);
}

TEST_F(AppStateDownloadTest, aPauseKeepsThePhaseAndLetsTheMachineSleep) {
    beginDownload({small});
    app->togglePause();
    EXPECT_TRUE(app->isDownloadPaused());
    EXPECT_TRUE(eventually([&] { return stillAwake.expired(); }));
    EXPECT_TRUE(isIn<phase::Downloading>(app->phase()));
    EXPECT_TRUE(app->isDownloadPaused());
    EXPECT_TRUE(eventually([&] { return network.openConnections() == 0; }));
    EXPECT_EQ(partialSize(), bytes.size() / 2);

    network.answer(Script(206).raw(bytes.sliced(bytes.size() / 2)));
    app->togglePause();
    EXPECT_FALSE(app->isDownloadPaused());
    EXPECT_EQ(reasons.size(), 2) << "going on takes a new token";
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(network.requests().last().headers.value("range"),
              "bytes=" + QByteArray::number(bytes.size() / 2) + '-');
    EXPECT_EQ(readFile(modelsFolder() + u"/small.gguf"_s), bytes);
}

TEST_F(AppStateDownloadTest, pauseAndResumeInOneBreathLoseNothing) {
    beginDownload({small});
    network.answer(Script(206).raw(bytes.sliced(bytes.size() / 2)));
    app->togglePause();
    app->togglePause();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(readFile(modelsFolder() + u"/small.gguf"_s), bytes);
    EXPECT_FALSE(app->isDownloadPaused());
}

TEST_F(AppStateDownloadTest, aDownloadGoesOnInTheNextRun) {
    beginDownload({small});
    app->shutDown();
    serveCatalog({small});
    network.answer(Script(206).raw(bytes.sliced(bytes.size() / 2)));
    makeApp();
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(readFile(modelsFolder() + u"/small.gguf"_s), bytes);
}

TEST_F(AppStateDownloadTest, anyOtherFailureIsAnErrorInItsOwnWords) {
    seenWelcome();
    serveCatalog({small, light});
    network.answer(Script(404));
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Error>());
    EXPECT_EQ(app->phase(), AppPhase(phase::Error{u"The download failed (HTTP 404)."_s, true}));
    EXPECT_TRUE(stillAwake.expired());
    EXPECT_FALSE(app->settings().installed);
}

TEST_F(AppStateDownloadTest, theLightestModelHasNoneToTryInstead) {
    seenWelcome();
    serveCatalog({small});
    network.answer(Script(404));
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Error>());
    EXPECT_FALSE(std::get<phase::Error>(app->phase()).canTryLighter);
}

TEST_F(AppStateDownloadTest, aLostConnectionIsAnErrorAndTryAgainGoesOnWhereItStopped) {
    seenWelcome();
    serveCatalog({small});
    network.answer(Script(200).raw(bytes.first(1000)).drop());
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Error>());
    EXPECT_EQ(std::get<phase::Error>(app->phase()).message,
              u"The download paused because the connection dropped. It will resume from where it stopped."_s);
    EXPECT_FALSE(app->isDownloadPaused());
    network.answer(Script(206).raw(bytes.sliced(1000)));
    app->resolveModel();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(network.requests().last().headers.value("range"), "bytes=1000-");
}

TEST_F(AppStateDownloadTest, anEngineThatCannotStartAfterTheDownloadIsAnError) {
    qputenv("FAKE_SERVER", "exit broken");
    seenWelcome();
    serveCatalog({small, light});
    network.answer(Script(200).raw(bytes));
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Error>());
    EXPECT_EQ(app->phase(), AppPhase(phase::Error{u"broken\nbroken"_s, true}));
    EXPECT_TRUE(loadSettings().installed);
    EXPECT_TRUE(stillAwake.expired());
}

TEST_F(AppStateDownloadTest, anotherModelTakesTheDownloadsPlace) {
    beginDownload({small, light});
    ASSERT_TRUE(eventually([&] { return app->downloadProgress().has_value(); }));
    network.answer(Script(200).raw(bytes).hold());
    app->beginDownload(light);
    EXPECT_FALSE(app->downloadProgress()) << "what is known of one model says nothing of another";
    EXPECT_EQ(app->activeTier(), light);
    ASSERT_TRUE(eventually(
        [&] { return QFileInfo(modelsFolder() + u"/light.gguf.partial"_s).size() == bytes.size(); }));
    network.goOn();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(loadSettings().installed->tierId, u"light"_s);
    EXPECT_EQ(phases, (QStringList{u"downloading"_s, u"starting"_s, u"ready"_s}));
}

TEST_F(AppStateDownloadTest, aFullDiskGivesALighterModelAndANote) {
    seenWelcome();
    ModelTier huge = tier(u"huge"_s, bytes);
    huge.sizeBytes = 10'000'000'000;
    machine.freeDisk = 6'000'000'000;
    serveCatalog({huge, small});
    network.answer(Script(200).raw(bytes));
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(app->activeTier(), small);
    EXPECT_EQ(app->diskNote(), u"Ostrelin picked a lighter brain because your Mac is low on storage. "
                               "Free up 9.0 GB to upgrade."_s);

    const EnvironmentVariable forced("OSTRELIN_TIER", "small");
    network.answer(Script(200).raw(bytes));
    app->deleteModel();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_FALSE(app->diskNote()) << "what was chosen on purpose isn't the disk's doing";
}

TEST_F(AppStateDownloadTest, theNoteSaysNothingOfAModelThatThePersonHasChosen) {
    seenWelcome();
    ModelTier huge = tier(u"huge"_s, bytes);
    huge.sizeBytes = 10'000'000'000;
    machine.freeDisk = 6'000'000'000;
    serveCatalog({huge, small});
    network.answer(Script(200).raw(bytes));
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    ASSERT_TRUE(app->diskNote());
    app->switchModel(huge);
    EXPECT_FALSE(app->diskNote());
}

TEST_F(AppStateDownloadTest, resumingNothingDoesNothing) {
    app->togglePause();
    EXPECT_TRUE(app->isDownloadPaused());
    app->togglePause();
    EXPECT_FALSE(app->isDownloadPaused());
    EXPECT_TRUE(isIn<phase::Checking>(app->phase()));
}

/// What is left of the application folder once everything was deleted.
class AppStateDeleteTest : public AppStateDownloadTest {
protected:
    void expectEmpty() const {
        EXPECT_TRUE(isIn<phase::NeedsInitialization>(app->phase()));
        EXPECT_EQ(filesIn(applicationFolder()), QStringList());
        EXPECT_EQ(filesIn(chatsFolder()), QStringList());
        EXPECT_EQ(filesIn(pagesFolder()), QStringList());
        EXPECT_TRUE(QDir(modelsFolder()).entryList({u"*.gguf*"_s}).isEmpty());
        EXPECT_TRUE(QDir(pagesFolder()).exists());
        EXPECT_EQ(app->settings(), Settings());
        EXPECT_FALSE(app->activeTier());
        EXPECT_FALSE(app->pendingTier());
        EXPECT_FALSE(app->downloadProgress());
        EXPECT_FALSE(app->isDownloadPaused());
        EXPECT_FALSE(app->diskNote());
        EXPECT_FALSE(app->showsWhySize());
        EXPECT_EQ(app->memory(), QString());
        EXPECT_FALSE(app->chat().conversation());
        EXPECT_TRUE(app->chat().summaries().isEmpty());
        EXPECT_FALSE(box.isRunning());
        EXPECT_TRUE(stillAwake.expired());
    }
};

TEST_F(AppStateDeleteTest, aReadyProgramIsAsOnTheFirstDay) {
    hasModel(small);
    writeAtomically(memoryFile(), "- likes tea");
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    app->setShowsWhySize(true);
    app->deleteEverything();
    expectEmpty();
    letPass(50);
    expectEmpty();
}

TEST_F(AppStateDeleteTest, theNoteOnTheDiskGoesAsWell) {
    machine.freeDisk = 11'000'000'000;
    seenWelcome();
    ModelTier huge = tier(u"huge"_s, bytes);
    huge.sizeBytes = 20'000'000'000;
    serveCatalog({huge, small});
    network.answer(Script(200).raw(bytes));
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    ASSERT_TRUE(app->diskNote());
    app->deleteEverything();
    expectEmpty();
}

TEST_F(AppStateDeleteTest, aDownloadEndsAndLeavesNothing) {
    beginDownload({small});
    app->deleteEverything();
    expectEmpty();
    EXPECT_TRUE(eventually([&] { return network.openConnections() == 0; }));
    letPass(50);
    expectEmpty();
}

TEST_F(AppStateDeleteTest, aStartOfTheEngineEndsAndStaysEnded) {
    qputenv("FAKE_SERVER", "loading 1000");
    hasModel(small);
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(eventually([&] { return box.isRunning(); }));
    app->deleteEverything();
    expectEmpty();
    letPass(50);
    expectEmpty();
}

TEST_F(AppStateDeleteTest, aPausedDownloadIsForgotten) {
    beginDownload({small});
    app->togglePause();
    ASSERT_TRUE(eventually([&] { return network.openConnections() == 0; }));
    app->deleteEverything();
    expectEmpty();
    app->togglePause();
    app->togglePause();
    letPass(50);
    expectEmpty();
}

TEST_F(AppStateDeleteTest, whileTheStartIsUnderWayItIsTheLastWord) {
    hasModel(small);
    network.answer(Script(200).hold().raw(encodeRecord(Catalog{1, {small}})));
    app->bootstrap();
    ASSERT_TRUE(eventually([&] { return network.requests().size() == 1; }));
    app->deleteEverything();
    expectEmpty();
    network.goOn();
    ASSERT_TRUE(eventually([&] { return !app->catalog().tiers.isEmpty(); }));
    letPass(50);
    expectEmpty();
}

TEST_F(AppStateDeleteTest, theStartButtonWaitsForAStartThatIsUnderWay) {
    network.answer(Script(200).hold().raw(encodeRecord(Catalog{1, {small}})));
    app->bootstrap();
    ASSERT_TRUE(eventually([&] { return network.requests().size() == 1; }));
    app->deleteEverything();
    app->finishWelcome();
    EXPECT_TRUE(isIn<phase::Checking>(app->phase()));
    network.goOn();
    network.answer(Script(200).raw(bytes));
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(phases, (QStringList{u"needsInitialization"_s, u"checking"_s, u"downloading"_s, u"starting"_s,
                                   u"ready"_s}));
}

TEST_F(AppStateDeleteTest, aModelThatIsDeletedDuringTheStartIsDownloadedAtItsEnd) {
    hasModel(small);
    network.answer(Script(200).hold().raw(encodeRecord(Catalog{1, {small}})));
    app->bootstrap();
    ASSERT_TRUE(eventually([&] { return network.requests().size() == 1; }));
    app->deleteModel();
    EXPECT_TRUE(isIn<phase::Checking>(app->phase()));
    EXPECT_FALSE(QFile::exists(modelsFolder() + u"/small.gguf"_s));
    network.goOn();
    network.answer(Script(200).raw(bytes));
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(readFile(modelsFolder() + u"/small.gguf"_s), bytes);
}

TEST_F(AppStateDeleteTest, theStartButtonBeginsAnewAndARelaunchWelcomes) {
    hasModel(small);
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    app->deleteEverything();
    makeApp();
    serveCatalog({small});
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Welcome>());
    app->deleteEverything();
    network.answer(Script(200).raw(bytes));
    app->finishWelcome();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_TRUE(loadSettings().didFinishWelcome);
}
