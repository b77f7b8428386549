#include "engine/DownloadFixture.h"

#include <semaphore>

using namespace Qt::StringLiterals;

// Pause, stop, the end of the downloader, and downloads that come one after the other.

class DownloadPauseTest : public DownloadFixture {
protected:
    /// A download that has brought so many bytes and waits for more.
    Run beginUntil(qsizetype place) {
        m_server.setManner({.holdAt = place});
        const Run run = begin(tierAt(m_server.url()));
        EXPECT_TRUE(eventually([&] { return QFileInfo(partialPath()).size() == place; }));
        return run;
    }

    void expectResumes(const QByteArray &range) {
        m_server.setManner({});
        expectVerified(download(tierAt(m_server.url())));
        EXPECT_EQ(m_server.ranges().last(), range);
    }

    FileServer m_server{file};
};

TEST_F(DownloadPauseTest, aPauseEndsTheRequestAndKeepsThePartialFile) {
    const Run run = beginUntil(100'000);
    downloader->pause();
    ASSERT_TRUE(hasEnded(run));
    expectFailure(run, Kind::paused);
    EXPECT_EQ(run->sentence(), "Download paused.");
    EXPECT_TRUE(eventually([&] { return m_server.openConnections() == 0; }));
    EXPECT_EQ(partialFile(), file.first(100'000));
    expectResumes("bytes=100000-");
}

TEST_F(DownloadPauseTest, aPauseBeforeTheAnswerBeginsEndsTheRequestToo) {
    ScriptedEngine silent;
    silent.answer(Script::silence());
    const Run run = begin(tierAt(silent.url()));
    ASSERT_TRUE(eventually([&] { return silent.requests().size() == 1; }));
    downloader->pause();
    ASSERT_TRUE(hasEnded(run));
    expectFailure(run, Kind::paused);
}

TEST_F(DownloadPauseTest, aPauseWhereNothingRunsIsForgotten) {
    downloader->pause();
    expectVerified(download(tierAt(m_server.url())));
    downloader->pause();
}

TEST_F(DownloadPauseTest, aDownloadThatFollowsAPauseAtOnceIsNotPaused) {
    const Run first = beginUntil(100'000);
    m_server.setManner({});
    downloader->pause();
    const Run second = begin(tierAt(m_server.url()));
    ASSERT_TRUE(hasEnded(second));
    expectFailure(first, Kind::paused);
    expectVerified(second);
    EXPECT_EQ(m_server.ranges(), (QByteArrayList{"", "bytes=100000-"}));
}

// The downloader reads its clock between the hash and the request, which is where this one waits.
class DownloadPauseInHashTest : public DownloadPauseTest {
protected:
    void SetUp() override {
        useWorld({.now = [this] {
            if (!m_hasWaited.exchange(true)) {
                m_isWaiting = true;
                m_goOn.acquire();
            }
            return ModelDownloader::Moment{};
        }});
    }

    /// Pauses before the request, and lets the download go on.
    void pauseBeforeTheRequest() {
        ASSERT_TRUE(eventually([&] { return m_isWaiting.load(); }));
        downloader->pause();
        m_goOn.release();
    }

    std::atomic<bool> m_hasWaited = false;
    std::atomic<bool> m_isWaiting = false;
    std::binary_semaphore m_goOn{0};
};

TEST_F(DownloadPauseInHashTest, aPauseDuringTheHashTakesEffectOnlyWhenTheFollowingRequestEnds) {
    putPartial(file.first(100'000));
    const Run run = begin(tierAt(m_server.url()));
    pauseBeforeTheRequest();
    ASSERT_TRUE(hasEnded(run));
    expectFailure(run, Kind::paused);
    EXPECT_EQ(m_server.ranges(), QByteArrayList{"bytes=100000-"});
    EXPECT_EQ(partialFile(), file) << "the request wasn't cut off";
    EXPECT_FALSE(finalFile());
    expectVerified(download(tierAt(m_server.url())));
    EXPECT_EQ(m_server.requests().size(), 1) << "the file was whole";
}

TEST_F(DownloadPauseInHashTest, aStopAfterTheHashSendsNothingAndMakesNothing) {
    for (const QByteArray &partial : {QByteArray(), QByteArray(file.first(100'000))}) {
        m_hasWaited = m_isWaiting = false;
        QFile::remove(partialPath());
        if (!partial.isEmpty())
            putPartial(partial);
        const Run run = begin(tierAt(m_server.url()));
        ASSERT_TRUE(eventually([&] { return m_isWaiting.load(); }));
        run->stop.request_stop();
        m_goOn.release();
        ASSERT_TRUE(hasEnded(run));
        EXPECT_TRUE(run->wasCancelled());
        EXPECT_TRUE(m_server.requests().isEmpty());
        EXPECT_EQ(QFile::exists(partialPath()), !partial.isEmpty());
    }
}

TEST_F(DownloadPauseInHashTest, thePauseGoesBeforeWhateverTheRequestEndsWith) {
    for (const Manner &manner : {Manner{.status = 404}, Manner{.status = 416}, Manner{.dropAt = 150'000},
                                 Manner{.range = Manner::Range::ignored}}) {
        m_hasWaited = m_isWaiting = false;
        putPartial(file.first(100'000));
        FileServer server(file, manner);
        const FileServer mirror(file);
        const Run run = begin(tierAt(server.url(), mirror.url()));
        pauseBeforeTheRequest();
        ASSERT_TRUE(hasEnded(run));
        expectFailure(run, Kind::paused);
        EXPECT_EQ(server.requests().size(), 1);
        EXPECT_TRUE(mirror.requests().isEmpty());
        EXPECT_TRUE(partialFile()->startsWith(file.first(100'000)));
    }
}

TEST_F(DownloadPauseTest, aStopCancelsAndKeepsThePartialFile) {
    const Run run = beginUntil(100'000);
    run->stop.request_stop();
    ASSERT_TRUE(hasEnded(run));
    EXPECT_TRUE(run->wasCancelled());
    EXPECT_TRUE(eventually([&] { return m_server.openConnections() == 0; }));
    EXPECT_EQ(partialFile(), file.first(100'000));
    expectResumes("bytes=100000-");
}

TEST_F(DownloadPauseTest, aStopBeforeTheBeginningSendsNothing) {
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(await(downloader->download(tierAt(m_server.url()), folder.path(), stop.get_token())),
                 Cancelled);
    EXPECT_TRUE(m_server.requests().isEmpty());
}

TEST_F(DownloadPauseTest, aStopEndsTheHashOfALargePartialFile) {
    QFile partial(partialPath());
    ASSERT_TRUE(partial.open(QIODevice::WriteOnly));
    ASSERT_TRUE(partial.resize(40'000'000'000)) << "with nothing in it";
    ModelTier tier = tierAt(m_server.url());
    tier.sizeBytes = 40'000'000'001;
    const Run run = begin(tier);
    ASSERT_TRUE(eventually([&] { return !told.isEmpty() && told.first().isCheckingPartial; }));
    run->stop.request_stop();
    ASSERT_TRUE(hasEnded(run));
    EXPECT_TRUE(run->wasCancelled());
    EXPECT_TRUE(m_server.requests().isEmpty());
}

TEST_F(DownloadPauseTest, afterAStopOfAllNothingIsWrittenAnyMore) {
    const Run running = beginUntil(100'000);
    const Run waiting = begin(tierAt(m_server.url()));
    downloader->stop();
    QFile::remove(partialPath());
    m_server.goOn();
    ASSERT_TRUE(hasEnded(running));
    ASSERT_TRUE(hasEnded(waiting));
    EXPECT_TRUE(running->wasCancelled());
    EXPECT_TRUE(waiting->wasCancelled());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList());
    m_server.setManner({});
    expectVerified(download(tierAt(m_server.url())));
}

TEST_F(DownloadPauseTest, aStopOfAllLeavesAWholePartialFileUnderItsName) {
    QFile partial(partialPath());
    ASSERT_TRUE(partial.open(QIODevice::WriteOnly));
    ASSERT_TRUE(partial.resize(40'000'000'000)) << "with nothing in it";
    ModelTier tier = tierAt(m_server.url());
    tier.sizeBytes = 40'000'000'000;
    const Run run = begin(tier);
    letPass(20);
    downloader->stop();
    ASSERT_TRUE(hasEnded(run));
    EXPECT_TRUE(run->wasCancelled());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"model.gguf.partial"_s});
}

TEST_F(DownloadPauseTest, theEndOfTheDownloaderCancelsAndLetsGoOfTheFile) {
    const Run run = beginUntil(100'000);
    downloader.reset();
    EXPECT_EQ(partialFile(), file.first(100'000));
    ASSERT_TRUE(hasEnded(run));
    EXPECT_TRUE(run->wasCancelled());
    downloader = std::make_unique<ModelDownloader>();
    expectResumes("bytes=100000-");
}

TEST_F(DownloadPauseTest, nothingIsToldOnceTheDownloaderIsGone) {
    const Run run = begin(tierAt(m_server.url()));
    QThread::msleep(50);
    downloader.reset();
    ASSERT_TRUE(hasEnded(run));
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(DownloadPauseTest, aDownloadWaitsUntilTheOneBeforeHasEnded) {
    const Run first = beginUntil(100'000);
    const Run second = begin(tierAt(m_server.url()));
    const Run third = begin(tierAt(m_server.url()));
    letPass(50);
    EXPECT_EQ(m_server.requests().size(), 1);
    m_server.goOn();
    ASSERT_TRUE(hasEnded(third));
    expectVerified(first);
    expectVerified(second);
    expectVerified(third);
    EXPECT_EQ(m_server.requests().size(), 1);
}

TEST_F(DownloadPauseTest, aDownloadWaitsAlsoForOneThatWasStoppedAMomentAgo) {
    for (int round = 0; round < 20; ++round) {
        QFile::remove(finalPath());
        QFile::remove(partialPath());
        const Run first = beginUntil(100'000);
        m_server.setManner({});
        first->stop.request_stop();
        const Run second = begin(tierAt(m_server.url()));
        ASSERT_TRUE(hasEnded(second));
        EXPECT_TRUE(first->wasCancelled());
        expectVerified(second);
        EXPECT_EQ(m_server.ranges().last(), "bytes=100000-");
    }
}

TEST_F(DownloadPauseTest, aDownloadThatWaitsForItsTurnCanBeStoppedAndPaused) {
    const Run first = beginUntil(100'000);
    const Run second = begin(tierAt(m_server.url()));
    const Run third = begin(tierAt(m_server.url()));
    second->stop.request_stop();
    ASSERT_TRUE(hasEnded(second));
    EXPECT_TRUE(second->wasCancelled());
    EXPECT_FALSE(first->hasEnded);
    downloader->pause();
    ASSERT_TRUE(hasEnded(third));
    expectFailure(first, Kind::paused);
    expectFailure(third, Kind::paused);
}
