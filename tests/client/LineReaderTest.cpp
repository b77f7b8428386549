#include "client/LineReader.h"

#include <QByteArrayList>

#include <random>

#include <gtest/gtest.h>

namespace {

QByteArrayList linesOf(const QByteArray &text, qsizetype pieceSize) {
    LineReader reader;
    QByteArrayList lines;
    for (qsizetype start = 0; start < text.size(); start += pieceSize) {
        reader.feed(text.mid(start, pieceSize));
        while (const auto line = reader.next())
            lines.append(line->toByteArray());
    }
    if (const auto rest = reader.rest())
        lines.append(rest->toByteArray());
    return lines;
}

/// The same rule read slowly: every line end is made an LF first.
QByteArrayList plainLinesOf(QByteArray text) {
    QByteArrayList lines = text.replace("\r\n", "\n").replace('\r', '\n').split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

} // namespace

TEST(LineReader, linesEndWithAnyOfTheThreeLineEnds) {
    EXPECT_EQ(linesOf("a\nb\rc\r\nd\n", 100), (QByteArrayList{"a", "b", "c", "d"}));
}

TEST(LineReader, emptyLinesAreLines) {
    EXPECT_EQ(linesOf("\n\n\r\n\r", 100), (QByteArrayList{"", "", "", ""}));
}

TEST(LineReader, theEndOfTheBodyEndsALine) {
    EXPECT_EQ(linesOf("a\nb", 100), (QByteArrayList{"a", "b"}));
}

TEST(LineReader, aLineIsGivenAsSoonAsItsEndIsThere) {
    LineReader reader;
    reader.feed("data: x");
    EXPECT_FALSE(reader.next());
    reader.feed("\r");
    EXPECT_EQ(reader.next().value(), QByteArrayView("data: x"));
    reader.feed("\nnext\n");
    EXPECT_EQ(reader.next().value(), QByteArrayView("next"));
    EXPECT_FALSE(reader.next());
}

TEST(LineReader, aLineWithoutAnEndIsDroppedAndTheNextOneRead) {
    LineReader reader;
    const QByteArray piece(1'000'000, 'x');
    for (int count = 0; count < 40; ++count) {
        reader.feed(piece);
        ASSERT_FALSE(reader.next());
    }
    reader.feed("tail\nnext\n");
    EXPECT_EQ(reader.next().value(), QByteArrayView(""));
    EXPECT_EQ(reader.next().value(), QByteArrayView("next"));
}

TEST(LineReader, theSizesOfThePiecesDoNotMatter) {
    std::mt19937 random(7);
    const QByteArray alphabet = "ab\r\n\n\r\xC3\xA4";
    for (int round = 0; round < 3000; ++round) {
        QByteArray text;
        const int length = static_cast<int>(random() % 24);
        for (int index = 0; index < length; ++index)
            text += alphabet.at(static_cast<qsizetype>(random() % 8));
        for (const qsizetype pieceSize : {1, 2, 3, 7, 100})
            ASSERT_EQ(linesOf(text, pieceSize), text.isEmpty() ? QByteArrayList() : plainLinesOf(text))
                << text.toHex().toStdString();
    }
}
