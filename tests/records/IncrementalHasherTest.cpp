#include "records/IncrementalHasher.h"

#include <QByteArray>
#include <QCryptographicHash>

#include <random>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString ofNothing = u"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"_s;

QString plainDigest(const QByteArray &bytes) {
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

} // namespace

TEST(IncrementalHasher, noDataAtAllHasTheDigestOfTheEmptyStringTwice) {
    const IncrementalHasher hasher;
    EXPECT_EQ(hasher.hexDigest(), ofNothing);
    EXPECT_EQ(hasher.hexDigest(), ofNothing);
}

TEST(IncrementalHasher, anEmptyChunkDoesNothing) {
    IncrementalHasher hasher;
    hasher.update({});
    EXPECT_EQ(hasher.hexDigest(), ofNothing);
    hasher.update("abc");
    hasher.update(QByteArrayView());
    EXPECT_EQ(hasher.hexDigest(), u"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"_s);
}

TEST(IncrementalHasher, hashingGoesOnAfterTheDigestWasRead) {
    IncrementalHasher hasher;
    hasher.update("ab");
    EXPECT_EQ(hasher.hexDigest(), plainDigest("ab"));
    hasher.update("c");
    EXPECT_EQ(hasher.hexDigest(), plainDigest("abc"));
}

TEST(IncrementalHasher, onlyTheStreamOfBytesCountsNotItsPieces) {
    std::mt19937 random(1);
    QByteArray bytes(300000, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = static_cast<char>(random());
    IncrementalHasher hasher;
    for (qsizetype at = 0; at < bytes.size();) {
        const QByteArray piece = bytes.mid(at, static_cast<qsizetype>(random() % 5000));
        hasher.update(piece);
        at += piece.size();
    }
    EXPECT_EQ(hasher.hexDigest(), plainDigest(bytes));
}

TEST(IncrementalHasher, aMovedHasherGoesOnWhereItWas) {
    IncrementalHasher first;
    first.update("ab");
    IncrementalHasher second(std::move(first));
    second.update("c");
    EXPECT_EQ(second.hexDigest(), plainDigest("abc"));
    first = std::move(second);
    EXPECT_EQ(first.hexDigest(), plainDigest("abc"));
}
