#include "records/RingBuffer.h"

#include <thread>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(RingBuffer, linesAreKeptOldestFirst) {
    RingBuffer buffer;
    EXPECT_EQ(buffer.snapshot(), QStringList());
    buffer.append(u"one"_s);
    buffer.append(QString());
    buffer.append(u"two"_s);
    EXPECT_EQ(buffer.snapshot(), (QStringList{u"one"_s, QString(), u"two"_s}));
}

TEST(RingBuffer, after501AppendsTheFirstLineIsGone) {
    RingBuffer buffer;
    for (int line = 1; line <= 500; ++line)
        buffer.append(QString::number(line));
    EXPECT_EQ(buffer.snapshot().size(), 500);
    EXPECT_EQ(buffer.snapshot().first(), u"1"_s);
    buffer.append(u"501"_s);
    EXPECT_EQ(buffer.snapshot().size(), 500);
    EXPECT_EQ(buffer.snapshot().first(), u"2"_s);
    EXPECT_EQ(buffer.snapshot().last(), u"501"_s);
}

TEST(RingBuffer, aLineIsCutToItsFirst2000Characters) {
    RingBuffer buffer;
    buffer.append(u"a"_s.repeated(1999) + u"bc"_s);
    buffer.append(u"a"_s.repeated(1999) + u"b"_s);
    const QString expected = u"a"_s.repeated(1999) + u'b';
    EXPECT_EQ(buffer.snapshot(), (QStringList{expected, expected}));
}

TEST(RingBuffer, aCutFallsBetweenCharactersNotIntoThem) {
    const QString flag = u"\U0001F1E9\U0001F1EA"_s;
    RingBuffer buffer;
    buffer.append(flag.repeated(2001));
    EXPECT_EQ(buffer.snapshot().first(), flag.repeated(2000));
}

TEST(RingBuffer, aSnapshotIsACopy) {
    RingBuffer buffer;
    buffer.append(u"one"_s);
    const QStringList before = buffer.snapshot();
    buffer.append(u"two"_s);
    EXPECT_EQ(before, QStringList{u"one"_s});
}

TEST(RingBuffer, linesComeFromOneThreadAndAreReadOnAnother) {
    RingBuffer buffer;
    std::thread writer([&buffer] {
        for (int line = 0; line < 20000; ++line)
            buffer.append(QString::number(line));
    });
    for (int look = 0; look < 200; ++look) {
        const QStringList lines = buffer.snapshot();
        ASSERT_LE(lines.size(), RingBuffer::capacity);
        for (qsizetype index = 1; index < lines.size(); ++index)
            ASSERT_EQ(lines[index].toInt(), lines[index - 1].toInt() + 1);
    }
    writer.join();
    EXPECT_EQ(buffer.snapshot().last(), u"19999"_s);
}
