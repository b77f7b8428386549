#include "engine/DownloadFixture.h"

using namespace Qt::StringLiterals;

// What each answer of a server leads to.

class DownloadAnswerTest : public DownloadFixture {
protected:
    const QByteArray begun = file.first(100'000);
};

TEST_F(DownloadAnswerTest, aServerThatIgnoresTheRangeGivesTheFileFromItsBeginning) {
    const FileServer server(file, {.range = Manner::Range::ignored});
    putPartial(begun);
    expectVerified(download(tierAt(server.url())));
    EXPECT_EQ(server.ranges(), (QByteArrayList{"bytes=100000-", ""}));
}

TEST_F(DownloadAnswerTest, aRestartCountsFromZero) {
    FileServer server(file, {.range = Manner::Range::ignored, .holdAt = 50'000});
    putPartial(begun);
    const Run run = begin(tierAt(server.url()));
    ASSERT_TRUE(eventually([&] { return told.size() >= 2; }));
    EXPECT_TRUE(told.first().isCheckingPartial);
    EXPECT_LE(told.at(1).received, 50'000);
    server.goOn();
    ASSERT_TRUE(hasEnded(run));
    expectVerified(run);
}

TEST_F(DownloadAnswerTest, anIgnoredRangeClosesTheConnectionOfTheFirstRequest) {
    const FileServer server(file, {.range = Manner::Range::ignored, .holdAt = 50'000});
    putPartial(begun);
    const Run run = begin(tierAt(server.url()));
    EXPECT_TRUE(eventually([&] { return server.requests().size() == 2 && server.openConnections() == 1; }));
    run->stop.request_stop();
    EXPECT_TRUE(hasEnded(run));
}

TEST_F(DownloadAnswerTest, aRangeBehindTheEndMeansThatTheFileIsWhole) {
    // The server's file is as long as what is there; the hash decides.
    const FileServer server(begun);
    putPartial(begun);
    expectFailure(download(tierAt(server.url())), Kind::hashMismatch);
    EXPECT_FALSE(partialFile());
    EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(DownloadAnswerTest, a416OnAFileOfTheRightHashAndTheWrongSizeRemovesIt) {
    const FileServer server(file, {.range = Manner::Range::refused});
    putPartial(begun);
    ModelTier tier = tierAt(server.url());
    tier.sha256 = sha256(begun);
    expectFailure(download(tier), Kind::hashMismatch);
    EXPECT_FALSE(partialFile());
}

TEST_F(DownloadAnswerTest, a416OnAFileThatIsWholeMovesIt) {
    // Of the files that the network is asked for, the empty one alone can be whole already.
    const FileServer server({}, {.status = 416});
    ModelTier tier = tierAt(server.url());
    tier.sha256 = sha256({});
    tier.sizeBytes = 0;
    EXPECT_EQ(download(tier)->path, finalPath());
    EXPECT_EQ(finalFile(), "");
    EXPECT_FALSE(partialFile());
}

TEST_F(DownloadAnswerTest, a416WithoutARangeIsWeighedToo) {
    const FileServer server(file, {.status = 416});
    expectFailure(download(tierAt(server.url())), Kind::hashMismatch);
    EXPECT_FALSE(partialFile());
}

TEST_F(DownloadAnswerTest, anyOtherStatusIsAFailureThatKeepsThePartialFile) {
    for (const int status : {201, 204, 301, 304, 400, 401, 403, 404, 429, 500, 503}) {
        const FileServer server(file, {.status = status});
        putPartial(begun);
        const Run run = download(tierAt(server.url()));
        expectFailure(run, Kind::http);
        EXPECT_EQ(run->failure()->httpStatus(), status);
        EXPECT_EQ(run->sentence(), "The download failed (HTTP " + std::to_string(status) + ").");
        EXPECT_EQ(partialFile(), begun);
        EXPECT_EQ(server.requests().size(), 1);
    }
}

TEST_F(DownloadAnswerTest, aPartIsTakenWithoutALookAtItsContentRange) {
    const FileServer server(file, {.contentRange = "bytes 5-6/7"});
    putPartial(begun);
    expectVerified(download(tierAt(server.url())));
}

TEST_F(DownloadAnswerTest, aPartFromAWrongPlaceIsFoundOutByTheHash) {
    const FileServer server(file, {.partFrom = begun.size() + 10});
    putPartial(begun);
    expectFailure(download(tierAt(server.url())), Kind::hashMismatch);
    EXPECT_FALSE(partialFile());
}

TEST_F(DownloadAnswerTest, aPartThatIsTooLongEndsAsSoonAsTheFileWouldBe) {
    const FileServer server(file, {.contentLength = QByteArray(), .partFrom = 0});
    putPartial(begun);
    expectFailure(download(tierAt(server.url())), Kind::hashMismatch);
    EXPECT_FALSE(partialFile());
}

TEST_F(DownloadAnswerTest, aBodyWithoutAnEndDoesNotFillTheDisk) {
    ScriptedEngine server;
    server.answer(Script(200).repeat(QByteArray(100'000, 'x')));
    expectFailure(download(tierAt(server.url())), Kind::hashMismatch);
    EXPECT_FALSE(partialFile());
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST_F(DownloadAnswerTest, wrongBytesAreRemoved) {
    const FileServer server(QByteArray(file.size(), 'x'));
    const Run run = download(tierAt(server.url()));
    expectFailure(run, Kind::hashMismatch);
    EXPECT_EQ(run->sentence(), "The download didn't match its checksum. Ostrelin will start it again.");
    EXPECT_FALSE(partialFile());
    EXPECT_FALSE(finalFile());
}

TEST_F(DownloadAnswerTest, aBodyThatIsShorterThanTheFileIsRemoved) {
    const FileServer server(file.first(1000));
    expectFailure(download(tierAt(server.url())), Kind::hashMismatch);
    EXPECT_FALSE(partialFile());
}

TEST_F(DownloadAnswerTest, aBodyOfNoAnnouncedLengthEndsWithTheConnection) {
    const FileServer server(file, {.contentLength = QByteArray()});
    expectVerified(download(tierAt(server.url())));
}

TEST_F(DownloadAnswerTest, aBodyThatIsLongerThanAnnouncedIsReadAsFarAsAnnounced) {
    const FileServer server(file + "and more", {.contentLength = QByteArray::number(file.size())});
    expectVerified(download(tierAt(server.url())));
}

TEST_F(DownloadAnswerTest, aBodyInChunksIsAsGoodAsAny) {
    ScriptedEngine server;
    server.answer(Script(200).raw(file.first(1)).raw(file.sliced(1)));
    expectVerified(download(tierAt(server.url())));
}

TEST_F(DownloadAnswerTest, aSlowTrickleArrives) {
    const FileServer server(file, {.pieceSize = 1500, .millisecondsBetweenPieces = 1});
    expectVerified(download(tierAt(server.url())));
}

TEST_F(DownloadAnswerTest, aRedirectIsFollowedWithItsRange) {
    const FileServer second(file);
    const FileServer first(file, {.redirect = second.url().toEncoded()});
    putPartial(begun);
    expectVerified(download(tierAt(first.url())));
    EXPECT_EQ(first.ranges(), QByteArrayList{"bytes=100000-"});
    EXPECT_EQ(second.ranges(), QByteArrayList{"bytes=100000-"});
    EXPECT_EQ(second.requests().first().headers.value("user-agent"), "Ostrelin/0.1 (Macintosh)");
}

TEST_F(DownloadAnswerTest, aRedirectWithoutARangeGetsNone) {
    const FileServer second(file);
    const FileServer first(file, {.redirect = second.url().toEncoded()});
    expectVerified(download(tierAt(first.url())));
    EXPECT_EQ(second.ranges(), QByteArrayList{""});
}
