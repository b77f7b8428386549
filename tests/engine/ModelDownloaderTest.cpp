#include "engine/DownloadFixture.h"
#include "support/DiskRecord.h"

using namespace Qt::StringLiterals;

class ModelDownloaderTest : public DownloadFixture {};

TEST_F(ModelDownloaderTest, aFileComesWholeAndVerifiedUnderItsName) {
    const FileServer server(file);
    expectVerified(download(tierAt(server.url())));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"model.gguf"_s});
}

TEST_F(ModelDownloaderTest, theDiskHasTheWholeFileBeforeItsNameAndTheNameBeforeTheEnd) {
    const FileServer server(file);
    const DiskRecord record;
    expectVerified(download(tierAt(server.url())));
    const QByteArray partial = partialPath().toLocal8Bit();
    const QByteArrayList expected{"flush " + partial,
                                  "rename " + partial + " to " + finalPath().toLocal8Bit(),
                                  "flush " + folder.path().toLocal8Bit()};
    EXPECT_EQ(DiskRecord::orders().join('\n').toStdString(), expected.join('\n').toStdString());
}

TEST_F(ModelDownloaderTest, theRequestNamesTheProgramAndNoRange) {
    const FileServer server(file);
    download(tierAt(server.url()));
    ASSERT_EQ(server.requests().size(), 1);
    EXPECT_EQ(server.requests().first().line, "GET /model.gguf HTTP/1.1");
    EXPECT_EQ(server.requests().first().headers.value("user-agent"), "Ostrelin/0.1 (Macintosh)");
    EXPECT_FALSE(server.requests().first().headers.contains("range"));
}

TEST_F(ModelDownloaderTest, theHashOfTheCatalogMayBeInCapitals) {
    const FileServer server(file);
    ModelTier tier = tierAt(server.url());
    tier.sha256 = tier.sha256.toUpper();
    expectVerified(download(tier));
}

TEST_F(ModelDownloaderTest, aFinalFileIsTakenAsItIsEvenIfItsContentIsWrong) {
    const FileServer server(file);
    put(finalPath(), "wrong");
    EXPECT_EQ(download(tierAt(server.url()))->path, finalPath());
    EXPECT_EQ(finalFile(), "wrong");
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(ModelDownloaderTest, aPartialFileIsResumedWhereItEnds) {
    const FileServer server(file);
    putPartial(file.first(123'456));
    expectVerified(download(tierAt(server.url())));
    EXPECT_EQ(server.ranges(), QByteArrayList{"bytes=123456-"});
}

TEST_F(ModelDownloaderTest, aPartialFileOfAnyLengthIsResumed) {
    for (const qsizetype length : {qsizetype(1), qsizetype(64'000), file.size() - 1}) {
        const FileServer server(file);
        QFile::remove(finalPath());
        putPartial(file.first(length));
        expectVerified(download(tierAt(server.url())));
        EXPECT_EQ(server.ranges(), QByteArrayList{"bytes=" + QByteArray::number(length) + '-'});
    }
}

TEST_F(ModelDownloaderTest, anEmptyPartialFileSendsNoRange) {
    const FileServer server(file);
    putPartial({});
    expectVerified(download(tierAt(server.url())));
    EXPECT_EQ(server.ranges(), QByteArrayList{""});
}

TEST_F(ModelDownloaderTest, aPartialFileThatIsTooLongIsRemovedAndTheDownloadBeginsFromZero) {
    const FileServer server(file);
    putPartial(file + "more");
    expectVerified(download(tierAt(server.url())));
    EXPECT_EQ(server.ranges(), QByteArrayList{""});
}

TEST_F(ModelDownloaderTest, aFullPartialFileWithAGoodHashNeverTouchesTheNetwork) {
    const FileServer server(file);
    putPartial(file);
    expectVerified(download(tierAt(server.url())));
    EXPECT_TRUE(server.requests().isEmpty());
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(ModelDownloaderTest, aFullPartialFileWithABadHashIsRemoved) {
    const FileServer server(file);
    putPartial(QByteArray(file.size(), 'x'));
    expectFailure(download(tierAt(server.url())), Kind::hashMismatch);
    EXPECT_FALSE(partialFile());
    EXPECT_FALSE(finalFile());
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(ModelDownloaderTest, afterAMismatchTheNextDownloadBeginsFromZero) {
    const FileServer server(file);
    putPartial(QByteArray(1000, 'x'));
    expectFailure(download(tierAt(server.url())), Kind::hashMismatch);
    EXPECT_FALSE(partialFile());
    expectVerified(download(tierAt(server.url())));
    EXPECT_EQ(server.ranges(), (QByteArrayList{"bytes=1000-", ""}));
}

TEST_F(ModelDownloaderTest, theCheckOfAPartialFileIsToldOnceBeforeTheBytesThatFollow) {
    const FileServer server(file);
    putPartial(file.first(200'000));
    download(tierAt(server.url()));
    ASSERT_GE(told.size(), 2);
    EXPECT_EQ(told.first(), (DownloadProgress{200'000, file.size(), 0, true}));
    for (const DownloadProgress &progress : told.mid(1))
        EXPECT_FALSE(progress.isCheckingPartial);
}

TEST_F(ModelDownloaderTest, theEndIsTold) {
    const FileServer server(file);
    download(tierAt(server.url()));
    ASSERT_FALSE(told.isEmpty());
    EXPECT_EQ(told.last().received, file.size());
    EXPECT_EQ(told.last().total, file.size());
}

TEST_F(ModelDownloaderTest, progressIsToldByTheEventLoopOfTheMainThread) {
    const FileServer server(file);
    bool isElsewhere = false;
    downloader->onProgress = [&](const DownloadProgress &progress) {
        isElsewhere = isElsewhere || QThread::currentThread() != QCoreApplication::instance()->thread();
        told.append(progress);
    };
    const Run run = begin(tierAt(server.url()));
    QThread::msleep(100);
    EXPECT_TRUE(told.isEmpty()) << "the loop hasn't run";
    EXPECT_TRUE(hasEnded(run));
    EXPECT_FALSE(told.isEmpty());
    EXPECT_FALSE(isElsewhere);
}

TEST_F(ModelDownloaderTest, whileTheClockStandsAllBytesAreToldOnceAndTheEndOnce) {
    const ModelDownloader::Moment moment{};
    useWorld({.now = [moment] { return moment; }});
    FileServer server(file, {.holdAt = 1000});
    const Run run = begin(tierAt(server.url()));
    ASSERT_TRUE(eventually([&] { return !told.isEmpty(); }));
    EXPECT_LT(told.first().received, file.size());
    server.setManner({});
    server.goOn();
    ASSERT_TRUE(hasEnded(run));
    ASSERT_EQ(told.size(), 2);
    EXPECT_EQ(told.last().received, file.size());
    // The quiet time outlives the download: of the next one's bytes nothing is told before its end.
    QFile::remove(finalPath());
    told.clear();
    download(tierAt(server.url()));
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told.first().received, file.size());
}

TEST_F(ModelDownloaderTest, nobodyNeedsToListen) {
    const FileServer server(file);
    downloader->onProgress = nullptr;
    expectVerified(download(tierAt(server.url())));
}

TEST_F(ModelDownloaderTest, theConnectionIsClosedAtTheEnd) {
    const FileServer server(file);
    download(tierAt(server.url()));
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST_F(ModelDownloaderTest, aNameThatLeadsOutOfTheFolderIsRefusedWithoutARequest) {
    const FileServer server(file);
    for (const QString &name : {u""_s, u"."_s, u".."_s, u"../model.gguf"_s, u"/etc/model.gguf"_s}) {
        ModelTier tier = tierAt(server.url());
        tier.filename = name;
        const Run run = download(tier);
        expectFailure(run, Kind::message);
        EXPECT_EQ(run->sentence(), "The download could not be saved.");
    }
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(ModelDownloaderTest, aNewFileIsForItsOwnersEyes) {
    const FileServer server(file);
    download(tierAt(server.url()));
    const auto others = QFileDevice::ReadGroup | QFileDevice::ReadOther;
    EXPECT_FALSE(QFileInfo(finalPath()).permissions() & others);
}
