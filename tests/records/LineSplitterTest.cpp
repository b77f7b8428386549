#include "records/LineSplitter.h"

#include "records/RingBuffer.h"

#include <QByteArray>

#include <set>
#include <thread>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QStringList linesOf(const QList<QByteArray> &chunks) {
    RingBuffer buffer;
    LineSplitter splitter;
    for (const QByteArray &chunk : chunks)
        splitter.feed(chunk, buffer);
    return buffer.snapshot();
}

} // namespace

TEST(LineSplitter, aLineMayCrossChunks) {
    EXPECT_EQ(linesOf({"a\nb", "c\n"}), (QStringList{u"a"_s, u"bc"_s}));
    EXPECT_EQ(linesOf({"a", "b", "", "c\nd\ne\n"}), (QStringList{u"abc"_s, u"d"_s, u"e"_s}));
}

TEST(LineSplitter, emptyLinesArePassedOn) {
    EXPECT_EQ(linesOf({"\n\n"}), (QStringList{QString(), QString()}));
    EXPECT_EQ(linesOf({"a\n", "\n"}), (QStringList{u"a"_s, QString()}));
}

TEST(LineSplitter, anUnfinishedLineWaits) {
    EXPECT_EQ(linesOf({"a\nrest"}), QStringList{u"a"_s});
    EXPECT_EQ(linesOf({}), QStringList());
    EXPECT_EQ(linesOf({""}), QStringList());
}

TEST(LineSplitter, onlyALineFeedEndsALine) {
    EXPECT_EQ(linesOf({"a\r\nb\rc\u2028d\n"}), (QStringList{u"a\r"_s, u"b\rc\u2028d"_s}));
}

TEST(LineSplitter, whatIsNotUtf8BecomesReplacementCharacters) {
    EXPECT_EQ(linesOf({"a\xff"
                       "b\n"}),
              QStringList{u"a\ufffdb"_s});
    EXPECT_EQ(linesOf({"Gr\xc3\xbc\xc3\x9f"
                       "e\n"}),
              QStringList{u"Grüße"_s});
}

TEST(LineSplitter, aCharacterThatIsSplitAcrossChunksIsLost) {
    const QStringList lines = linesOf({"a\xc3", "\xbc"
                                                "b\n"});
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines.first(), u"a\ufffd\ufffdb"_s);
}

TEST(LineSplitter, manyLinesInOneChunkTakeTimeInProportion) {
    EXPECT_EQ(linesOf({QByteArray("\n").repeated(2000000) + "end\n"}).last(), u"end"_s);
}

TEST(LineSplitter, aLineWithoutEndIsStillTheSameOnceItEnds) {
    QList<QByteArray> chunks;
    for (int chunk = 0; chunk < 2000; ++chunk)
        chunks.append(QByteArray("0123456789").repeated(100));
    chunks.append("\nnext\n");
    EXPECT_EQ(linesOf(chunks), (QStringList{u"0123456789"_s.repeated(200), u"next"_s}));
}

TEST(LineSplitter, aSplitterIsFedFromTwoThreads) {
    RingBuffer buffer;
    LineSplitter splitter;
    const auto feed = [&](const QByteArray &chunk) {
        for (int round = 0; round < 5000; ++round)
            splitter.feed(chunk, buffer);
    };
    std::thread one(feed, QByteArray("one\nuno\n"));
    std::thread two(feed, QByteArray("two\n"));
    for (int look = 0; look < 100; ++look)
        buffer.snapshot();
    one.join();
    two.join();
    const std::set<QString> expected{u"one"_s, u"uno"_s, u"two"_s};
    EXPECT_EQ(buffer.snapshot().size(), RingBuffer::capacity);
    for (const QString &line : buffer.snapshot())
        EXPECT_TRUE(expected.contains(line)) << line.toStdString();
}
