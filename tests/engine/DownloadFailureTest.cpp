#include "engine/DownloadFixture.h"
#include "platform/LoopbackPort.h"
#include "support/EnvironmentVariable.h"

#include <QTcpServer>
#include <QTcpSocket>

using namespace Qt::StringLiterals;

// A connection that fails, and a folder that does.

namespace {

constexpr auto offlineSentence =
    "The download paused because the connection dropped. It will resume from where it stopped.";

}

class DownloadFailureTest : public DownloadFixture {
protected:
    const QByteArray begun = file.first(100'000);
};

TEST_F(DownloadFailureTest, aConnectionThatDropsAtAnyByteIsResumed) {
    for (const qsizetype place : {qsizetype(0), qsizetype(1), qsizetype(16'384), qsizetype(99'999),
                                  qsizetype(200'000), file.size() - 1}) {
        QFile::remove(finalPath());
        QFile::remove(partialPath());
        FileServer server(file, {.dropAt = place});
        const Run run = download(tierAt(server.url()));
        expectFailure(run, Kind::offline);
        EXPECT_EQ(run->sentence(), offlineSentence);
        EXPECT_EQ(partialFile(), file.first(place));
        server.setManner({});
        expectVerified(download(tierAt(server.url())));
    }
}

TEST_F(DownloadFailureTest, aConnectionThatIsResetIsOfflineAndKeepsThePartialFile) {
    FileServer server(file, {.resetAt = 150'000});
    putPartial(begun);
    expectFailure(download(tierAt(server.url())), Kind::offline);
    EXPECT_TRUE(partialFile()->startsWith(begun));
    EXPECT_TRUE(file.startsWith(*partialFile()));
    server.setManner({});
    expectVerified(download(tierAt(server.url())));
}

TEST_F(DownloadFailureTest, aServerThatTakesTheRequestAndHangsUpIsOffline) {
    ScriptedEngine server;
    server.answer(Script::hangUp());
    putPartial(begun);
    expectFailure(download(tierAt(server.url())), Kind::offline);
    EXPECT_EQ(partialFile(), begun);
    EXPECT_EQ(server.requests().size(), 1) << "asked once";
}

TEST_F(DownloadFailureTest, aBodyThatIsShorterThanAnnouncedIsOfflineAndKept) {
    const FileServer server(file.first(150'000), {.contentLength = QByteArray::number(file.size())});
    expectFailure(download(tierAt(server.url())), Kind::offline);
    EXPECT_EQ(partialFile(), file.first(150'000));
}

TEST_F(DownloadFailureTest, aStallPastTheTimeOutIsAnErrorOfItsOwnAndKeepsThePartialFile) {
    useWorld({.idleTimeout = std::chrono::milliseconds(200)});
    const FileServer server(file, {.holdAt = 150'000});
    const Run run = download(tierAt(server.url()));
    EXPECT_FALSE(run->failure());
    EXPECT_EQ(run->sentence(), "The request timed out.");
    EXPECT_EQ(partialFile(), file.first(150'000));
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST_F(DownloadFailureTest, aServerThatNeverAnswersTimesOut) {
    useWorld({.idleTimeout = std::chrono::milliseconds(200)});
    ScriptedEngine server;
    server.answer(Script::silence());
    EXPECT_EQ(download(tierAt(server.url()))->sentence(), "The request timed out.");
}

TEST_F(DownloadFailureTest, whereNobodyListensTheSentenceSaysSo) {
    putPartial(begun);
    const auto nobody = QUrl(u"http://127.0.0.1:%1/"_s.arg(freeLoopbackPort().value()));
    const Run run = download(tierAt(nobody));
    EXPECT_FALSE(run->failure());
    EXPECT_EQ(run->sentence(), "Could not connect to the server.");
    EXPECT_EQ(partialFile(), begun);
}

TEST_F(DownloadFailureTest, anAddressThatIsNoneIsAnErrorOfItsOwn) {
    EXPECT_EQ(download(tierAt(QUrl(u"ftp://127.0.0.1/model.gguf"_s)))->sentence(),
              "The download failed (HTTP 0).");
}

TEST_F(DownloadFailureTest, aServerWithoutEncryptionIsNotSecure) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    QObject::connect(&server, &QTcpServer::newConnection, &server,
                     [&] { server.nextPendingConnection()->write("HTTP/1.1 400 What?\r\n\r\n"); });
    const QUrl url(u"https://127.0.0.1:%1/"_s.arg(server.serverPort()));
    EXPECT_EQ(download(tierAt(url))->sentence(), "A secure connection to the server could not be made.");
}

TEST_F(DownloadFailureTest, redirectsInACircleAreAnErrorOfTheirOwn) {
    FileServer server(file);
    server.setManner({.redirect = server.url().toEncoded()});
    EXPECT_EQ(download(tierAt(server.url()))->sentence(),
              "The server redirected the request too many times.");
}

TEST_F(DownloadFailureTest, aFolderThatIsNotThereIsTheErrorOfTheOpening) {
    const FileServer server(file);
    ASSERT_TRUE(QDir(folder.path()).removeRecursively());
    const Run run = download(tierAt(server.url()));
    EXPECT_FALSE(run->failure());
    EXPECT_EQ(run->sentence(), "\"model.gguf.partial\" could not be opened: No such file or directory.");
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(DownloadFailureTest, aFolderInThePlaceOfThePartialFileIsTheErrorOfTheReading) {
    const FileServer server(file);
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"model.gguf.partial"_s));
    const Run run = download(tierAt(server.url()));
    EXPECT_EQ(run->sentence(), "\"model.gguf.partial\" could not be read: Is a directory.");
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(DownloadFailureTest, aFolderInThePlaceOfTheFinalFileIsTheErrorOfTheMoveAndNothingIsLost) {
    const FileServer server(file);
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"model.gguf"_s));
    const Run run = download(tierAt(server.url()));
    EXPECT_EQ(run->sentence(), "\"model.gguf\" could not be saved: Is a directory.");
    EXPECT_EQ(partialFile(), file);
    ASSERT_TRUE(QDir(folder.path()).rmdir(u"model.gguf"_s));
    expectVerified(download(tierAt(server.url())));
    EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(DownloadFailureTest, aPartialFileThatIsRemovedOnTheWayIsNoVerifiedFile) {
    FileServer server(file, {.holdAt = 150'000});
    const Run run = begin(tierAt(server.url()));
    ASSERT_TRUE(eventually([&] { return QFileInfo(partialPath()).size() == 150'000; }));
    QFile::remove(partialPath());
    server.goOn();
    ASSERT_TRUE(hasEnded(run));
    expectFailure(run, Kind::hashMismatch);
    EXPECT_FALSE(finalFile());
}

TEST_F(DownloadFailureTest, anAnswerAfterAFailureIsTakenByTheNextDownload) {
    FileServer server(file, {.status = 500});
    expectFailure(download(tierAt(server.url())), Kind::http);
    server.setManner({});
    expectVerified(download(tierAt(server.url())));
}

// No network at all. The test's server plays the proxy over which a host outside is reached.

class DownloadOfflineTest : public DownloadFixture {
protected:
    DownloadOfflineTest() : m_proxy("http_proxy", server.url().toEncoded(QUrl::RemovePath)) {}

    void SetUp() override {
        useWorld({.hasNetwork =
                      [this] {
                          ++asked;
                          return isConnected.load();
                      },
                  .networkPollInterval = std::chrono::milliseconds(5)});
    }

    const QUrl outside{u"http://models.example/model.gguf"_s};
    const FileServer server{file};
    std::atomic<bool> isConnected = false;
    std::atomic<int> asked = 0;

private:
    EnvironmentVariable m_proxy;
};

TEST_F(DownloadOfflineTest, aRequestWaitsUntilThereIsANetwork) {
    const Run run = begin(tierAt(outside));
    EXPECT_TRUE(eventually([&] { return asked > 3; }));
    EXPECT_FALSE(run->hasEnded);
    EXPECT_TRUE(server.requests().isEmpty());
    isConnected = true;
    ASSERT_TRUE(hasEnded(run));
    expectVerified(run);
}

TEST_F(DownloadOfflineTest, theWaitCanBePaused) {
    putPartial(file.first(1000));
    const Run run = begin(tierAt(outside));
    EXPECT_TRUE(eventually([&] { return asked > 1; }));
    downloader->pause();
    ASSERT_TRUE(hasEnded(run));
    expectFailure(run, Kind::paused);
    EXPECT_EQ(partialFile(), file.first(1000));
}

TEST_F(DownloadOfflineTest, theWaitCanBeStopped) {
    const Run run = begin(tierAt(outside));
    EXPECT_TRUE(eventually([&] { return asked > 1; }));
    run->stop.request_stop();
    ASSERT_TRUE(hasEnded(run));
    EXPECT_TRUE(run->wasCancelled());
}

TEST_F(DownloadOfflineTest, theMachineItselfIsReachedWithoutANetwork) {
    expectVerified(download(tierAt(server.url())));
    EXPECT_EQ(asked, 0);
}
