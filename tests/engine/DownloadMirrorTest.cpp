#include "engine/DownloadFixture.h"
#include "platform/LoopbackPort.h"

using namespace Qt::StringLiterals;

// When the mirror takes over, and when it doesn't.

class DownloadMirrorTest : public DownloadFixture {
protected:
    const FileServer mirror{file};
};

TEST_F(DownloadMirrorTest, aServerThatDeliversNeedsNoMirror) {
    const FileServer server(file);
    expectVerified(download(tierAt(server.url(), mirror.url())));
    EXPECT_TRUE(mirror.requests().isEmpty());
}

TEST_F(DownloadMirrorTest, theMirrorTakesOverAfterARefusal) {
    const FileServer server(file, {.status = 404});
    expectVerified(download(tierAt(server.url(), mirror.url())));
    EXPECT_EQ(mirror.ranges(), QByteArrayList{""});
}

TEST_F(DownloadMirrorTest, theMirrorGoesOnFromTheFirstServersBytes) {
    const FileServer server(file, {.dropAt = 150'001});
    expectVerified(download(tierAt(server.url(), mirror.url())));
    EXPECT_EQ(mirror.ranges(), QByteArrayList{"bytes=150001-"});
}

TEST_F(DownloadMirrorTest, theMirrorTakesOverWhenTheServerIsNotThere) {
    const auto server = QUrl(u"http://127.0.0.1:%1/"_s.arg(freeLoopbackPort().value()));
    expectVerified(download(tierAt(server, mirror.url())));
}

TEST_F(DownloadMirrorTest, theMirrorTakesOverAfterATimeOut) {
    useWorld({.idleTimeout = std::chrono::milliseconds(200)});
    const FileServer server(file, {.holdAt = 120'000});
    expectVerified(download(tierAt(server.url(), mirror.url())));
    EXPECT_EQ(mirror.ranges(), QByteArrayList{"bytes=120000-"});
}

TEST_F(DownloadMirrorTest, theMirrorsOutcomeIsTheOutcome) {
    const FileServer server(file, {.status = 404});
    const FileServer other(file, {.status = 503});
    const Run run = download(tierAt(server.url(), other.url()));
    expectFailure(run, Kind::http);
    EXPECT_EQ(run->failure()->httpStatus(), 503);
}

TEST_F(DownloadMirrorTest, withoutAMirrorTheFirstFailureStands) {
    const FileServer server(file, {.status = 404});
    const Run run = download(tierAt(server.url()));
    expectFailure(run, Kind::http);
    EXPECT_EQ(run->failure()->httpStatus(), 404);
    EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(DownloadMirrorTest, aMirrorThatIgnoresTheRangeSendsTheRestartToTheFirstAddress) {
    const FileServer server(file, {.dropAt = 100'000});
    const FileServer ignoring(file, {.range = Manner::Range::ignored});
    const Run run = download(tierAt(server.url(), ignoring.url()));
    expectFailure(run, Kind::offline);
    EXPECT_EQ(server.ranges(), (QByteArrayList{"", ""})) << "again, from zero";
    EXPECT_EQ(ignoring.ranges(), QByteArrayList{"bytes=100000-"});
    EXPECT_EQ(partialFile(), file.first(100'000));
}

TEST_F(DownloadMirrorTest, aWrongHashIsNotTriedAtTheMirror) {
    const FileServer server(QByteArray(file.size(), 'x'));
    expectFailure(download(tierAt(server.url(), mirror.url())), Kind::hashMismatch);
    EXPECT_TRUE(mirror.requests().isEmpty());
}

TEST_F(DownloadMirrorTest, aPauseIsNotTriedAtTheMirror) {
    const FileServer server(file, {.holdAt = 100'000});
    const Run run = begin(tierAt(server.url(), mirror.url()));
    ASSERT_TRUE(eventually([&] { return QFileInfo(partialPath()).size() == 100'000; }));
    downloader->pause();
    ASSERT_TRUE(hasEnded(run));
    expectFailure(run, Kind::paused);
    EXPECT_TRUE(mirror.requests().isEmpty());
}

TEST_F(DownloadMirrorTest, aStopIsNotTriedAtTheMirror) {
    const FileServer server(file, {.holdAt = 100'000});
    const Run run = begin(tierAt(server.url(), mirror.url()));
    ASSERT_TRUE(eventually([&] { return QFileInfo(partialPath()).size() == 100'000; }));
    run->stop.request_stop();
    ASSERT_TRUE(hasEnded(run));
    EXPECT_TRUE(run->wasCancelled());
    EXPECT_TRUE(mirror.requests().isEmpty());
}

TEST_F(DownloadMirrorTest, aPauseAtTheMirrorIsAPause) {
    const FileServer server(file, {.dropAt = 50'000});
    const FileServer held(file, {.holdAt = 100'000});
    const Run run = begin(tierAt(server.url(), held.url()));
    ASSERT_TRUE(eventually([&] { return QFileInfo(partialPath()).size() == 100'000; }));
    downloader->pause();
    ASSERT_TRUE(hasEnded(run));
    expectFailure(run, Kind::paused);
    EXPECT_EQ(partialFile(), file.first(100'000));
}
