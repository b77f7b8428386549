#include "platform/GrowingFile.h"

#include <QDir>
#include <QTemporaryDir>

#include <numeric>

#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

class GrowingFileTest : public ::testing::Test {
protected:
    QByteArray content() const { return readFile(path).value_or("nothing"); }

    QByteArray inPieces(qsizetype size) const {
        QByteArray all;
        readInPieces(path, size, [&](QByteArrayView piece) {
            EXPECT_LE(piece.size(), size);
            all += piece.toByteArray();
            return true;
        });
        return all;
    }

    const QTemporaryDir folder;
    const QString path = folder.filePath(u"grows"_s);
};

std::string sentenceOf(const std::function<void()> &call) {
    try {
        call();
    } catch (const FileError &error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST_F(GrowingFileTest, aNewFileIsEmptyAndItsOwners) {
    const GrowingFile file(path);
    EXPECT_EQ(content(), "");
    EXPECT_FALSE(QFileInfo(path).permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther));
}

TEST_F(GrowingFileTest, piecesGoBehindWhatIsThere) {
    GrowingFile(path).append({"one", "", "two"});
    GrowingFile again(path);
    again.append({"three"});
    again.append({});
    again.flush();
    EXPECT_EQ(content(), "onetwothree");
}

TEST_F(GrowingFileTest, moreAndLargerPiecesThanASystemTakesAtOnce) {
    QList<QByteArray> pieces;
    for (int index = 0; index < 3000; ++index)
        pieces.append(QByteArray(index * 7, static_cast<char>(index)));
    GrowingFile(path).append(pieces);
    EXPECT_TRUE(content() == pieces.join());
}

TEST_F(GrowingFileTest, aFileThatCannotBeOpenedSaysWhy) {
    const QString nowhere = folder.filePath(u"not/there"_s);
    EXPECT_EQ(sentenceOf([&] { GrowingFile file(nowhere); }),
              "\"there\" could not be opened: No such file or directory.");
    EXPECT_EQ(sentenceOf([&] { GrowingFile file(folder.path()); }).substr(0, 1), "\"");
}

TEST_F(GrowingFileTest, aFullDiskIsAnErrorOfItsOwn) {
    GrowingFile full(u"/dev/full"_s);
    EXPECT_THROW(full.append({"x"}), DiskFullError);
    EXPECT_EQ(sentenceOf([&] { full.append({"x"}); }),
              "\"full\" could not be saved: No space left on device.");
}

TEST_F(GrowingFileTest, aFileIsReadInPiecesOfAnySize) {
    QByteArray bytes(1'000, Qt::Uninitialized);
    std::iota(bytes.begin(), bytes.end(), '\0');
    GrowingFile(path).append({bytes});
    for (const qsizetype size : {1, 7, 999, 1'000, 1'001, 0x100000})
        EXPECT_TRUE(inPieces(size) == bytes) << size;
}

TEST_F(GrowingFileTest, aReaderMayEndEarly) {
    GrowingFile(path).append({"abcdef"});
    int calls = 0;
    readInPieces(path, 2, [&](QByteArrayView) { return ++calls < 2; });
    EXPECT_EQ(calls, 2);
}

TEST_F(GrowingFileTest, whatCannotBeReadSaysWhy) {
    const auto take = [](QByteArrayView) { return true; };
    EXPECT_EQ(sentenceOf([&] { readInPieces(path, 5, take); }),
              "\"grows\" could not be opened: No such file or directory.");
    ASSERT_TRUE(QDir().mkdir(path));
    EXPECT_EQ(sentenceOf([&] { readInPieces(path, 5, take); }),
              "\"grows\" could not be read: Is a directory.");
}

TEST_F(GrowingFileTest, aFileMovesIntoThePlaceOfAnother) {
    const QString target = folder.filePath(u"target"_s);
    GrowingFile(path).append({"new"});
    GrowingFile(target).append({"old"});
    moveIntoPlace(path, target);
    EXPECT_EQ(readFile(target), "new");
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST_F(GrowingFileTest, aMoveThatTheDiskMayNotKnowOfSaysSoInASentenceToo) {
    GrowingFile(path).append({"new"});
    const QString target = folder.filePath(u"target"_s);
    // With no descriptor left the file gets its name, and the folder can't be opened to be flushed.
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none{0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    const std::string sentence = sentenceOf([&] { moveIntoPlace(path, target); });
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(sentence, "\"target\" could not be saved: Too many open files.");
    EXPECT_EQ(readFile(target), "new");
}

TEST_F(GrowingFileTest, aMoveThatFailsSaysWhyAndLosesNothing) {
    GrowingFile(path).append({"new"});
    const QString target = folder.filePath(u"target"_s);
    ASSERT_TRUE(QDir().mkdir(target));
    EXPECT_EQ(sentenceOf([&] { moveIntoPlace(path, target); }),
              "\"target\" could not be saved: Is a directory.");
    EXPECT_EQ(content(), "new");
}
