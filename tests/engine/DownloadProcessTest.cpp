#include "engine/DownloadFixture.h"
#include "engine/DownloaderProcess.h"

#include <random>
#include <thread>

using namespace Qt::StringLiterals;

// What a test's own process can't go through: a kill, a full disk, a disk that can't be written, a machine
// without a network.

class DownloadProcessTest : public DownloadFixture {
protected:
    QByteArrayList orderInto(const QByteArray &path, const QUrl &url, const QByteArray &whole) const {
        return {url.toEncoded(), path, QByteArray::number(whole.size()), sha256(whole).toLatin1()};
    }

    QByteArray folderPath() const { return QFile::encodeName(folder.path()); }

    const QByteArray disk = folderPath() + "/disk";
};

TEST_F(DownloadProcessTest, aDownloadThatIsKilledFiftyTimesGetsThere) {
    const QByteArray large = sampleFile(30'000'000);
    FileServer server(large, {.pieceSize = 16'384, .millisecondsBetweenPieces = 1});
    const QByteArrayList order = orderInto(folderPath(), server.url(), large);
    std::mt19937 random(7);
    int kills = 0;
    for (qint64 before = 0; kills < 50; ++kills) {
        DownloaderProcess process(order);
        // At first it reads what is there; then, at any moment, it is killed while it writes.
        ASSERT_TRUE(eventually([&] { return QFileInfo(partialPath()).size() > before; }));
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 30'000));
        ASSERT_TRUE(process.kill());
        before = QFileInfo(partialPath()).size();
        ASSERT_LT(before, large.size());
    }
    server.setManner({});
    DownloaderProcess last(order);
    EXPECT_EQ(last.output(), (QByteArrayList{"done", "0"}));
    EXPECT_TRUE(finalFile() == large);
    EXPECT_FALSE(partialFile());
    for (const QByteArray &range : server.ranges().mid(1))
        EXPECT_FALSE(range.isEmpty()) << "every download but the first went on";
}

TEST_F(DownloadProcessTest, aDiskThatFillsIsTheEndOfTheDownloadAndThePartialFileStays) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"disk"_s));
    const QByteArray mount = "mount -t tmpfs -o size=128k tmpfs " + disk;
    if (!DownloaderProcess::canMake("--mount", mount))
        GTEST_SKIP() << "A FULL DISK WASN'T TESTED: this system lets nobody mount one of their own";
    const FileServer server(file);
    DownloaderProcess process("--mount", mount + " && exec \"$0\" \"$@\"",
                              orderInto(disk, server.url(), file));
    const QByteArrayList output = process.output();
    ASSERT_EQ(output.size(), 2);
    EXPECT_EQ(output.first(), "full");
    EXPECT_EQ(output.last(), "131072") << "as far as the disk goes";
    EXPECT_EQ(server.requests().size(), 1);
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST_F(DownloadProcessTest, afterAFullDiskTheDownloadGoesOnWhereItHasRoom) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"disk"_s));
    const QByteArray mount = "mount -t tmpfs -o size=128k tmpfs " + disk;
    const QByteArray grow = "mount -o remount,size=1m " + disk;
    if (!DownloaderProcess::canMake("--mount", mount + " && " + grow))
        GTEST_SKIP() << "A FULL DISK WASN'T TESTED: this system lets nobody mount one of their own";
    const FileServer server(file);
    DownloaderProcess process("--mount", mount + " && \"$0\" \"$@\" && " + grow + " && \"$0\" \"$@\"",
                              orderInto(disk, server.url(), file));
    EXPECT_EQ(process.output(), (QByteArrayList{"full", "131072", "done", "0"}));
    EXPECT_EQ(server.ranges(), (QByteArrayList{"", "bytes=131072-"}));
}

TEST_F(DownloadProcessTest, aDiskThatCannotBeWrittenIsTheErrorOfTheOpening) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"disk"_s));
    const QByteArray mount = "mount -t tmpfs -o ro tmpfs " + disk;
    if (!DownloaderProcess::canMake("--mount", mount))
        GTEST_SKIP() << "A READ-ONLY DISK WASN'T TESTED: this system lets nobody mount one of their own";
    const FileServer server(file);
    DownloaderProcess process("--mount", mount + " && exec \"$0\" \"$@\"",
                              orderInto(disk, server.url(), file));
    EXPECT_EQ(process.output().first(), "\"model.gguf.partial\" could not be opened: Read-only file system.");
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(DownloadProcessTest, aMachineWithTheLoopbackAloneHasNoNetwork) {
    if (!DownloaderProcess::canMake("--net", "true"))
        GTEST_SKIP() << "NO NETWORK WASN'T TESTED: this system lets nobody have a network of their own";
    DownloaderProcess process("--net", "exec \"$0\" network", {});
    EXPECT_EQ(process.output(), QByteArrayList{"no"});
}
