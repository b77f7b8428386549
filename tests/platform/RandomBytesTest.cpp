#include "platform/RandomBytes.h"

#include <QSet>

#include <gtest/gtest.h>

TEST(RandomBytes, thereAreAsManyAsAskedForAndNoTwoTimesTheSame) {
    EXPECT_TRUE(randomBytes(0).isEmpty());
    EXPECT_EQ(randomBytes(32).size(), 32);
    EXPECT_NE(randomBytes(32), randomBytes(32));
}

TEST(RandomBytes, everyByteValueComesUp) {
    const QByteArray bytes = randomBytes(10'000);
    EXPECT_EQ(QSet<char>(bytes.begin(), bytes.end()).size(), 256);
}
