#include "web/IPAddress.h"

#include <QtEndian>

#include <array>
#include <random>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

IPAddress v4(quint32 number) {
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return IPAddress(bytes);
}

bool isBlocked(const QString &text) {
    return IPAddress::parse(text).value().isBlocked();
}

/// Every number whose first `bits` are those of `network`.
struct Range {
    quint32 network;
    int bits;

    bool contains(quint32 number) const { return ((number ^ network) >> (32 - bits)) == 0; }
    quint32 last() const { return network | ((1U << (32 - bits)) - 1); }
};

constexpr std::array<Range, 6> blockedRanges{{{0x00000000, 8},
                                              {0x0A000000, 8},
                                              {0x7F000000, 8},
                                              {0xA9FE0000, 16},
                                              {0xAC100000, 12},
                                              {0xC0A80000, 16}}};

bool isInABlockedRange(quint32 number) {
    return std::any_of(blockedRanges.begin(), blockedRanges.end(),
                       [number](Range range) { return range.contains(number); });
}

} // namespace

TEST(IPAddress, isParsedFromItsOneForm) {
    EXPECT_EQ(IPAddress::parse(u"1.2.3.4"_s), IPAddress("\1\2\3\4"));
    EXPECT_EQ(IPAddress::parse(u"::1"_s), IPAddress(QByteArray(15, '\0') + '\1'));
    for (const QString &text :
         {u""_s, u"localhost"_s, u"2130706433"_s, u"0x7f.1"_s, u"127.1"_s, u"010.1.1.1"_s, u"[::1]"_s,
          u"fe80::1%eth0"_s, u"1.2.3.4:80"_s, u"1.2.3.4."_s})
        EXPECT_FALSE(IPAddress::parse(text)) << text.toStdString();
}

TEST(IPAddress, ofVersionFourIsBlockedInTheSixRanges) {
    for (const Range &range : blockedRanges) {
        EXPECT_TRUE(v4(range.network).isBlocked());
        EXPECT_TRUE(v4(range.last()).isBlocked());
        EXPECT_FALSE(v4(range.last() + 1).isBlocked()) << range.network;
        // That before the first of all is the last one, which passes as well.
        EXPECT_FALSE(v4(range.network - 1).isBlocked()) << range.network;
    }
}

TEST(IPAddress, ofVersionFourIsBlockedNowhereElse) {
    for (quint32 start = 0; start <= 0xFFFF; ++start) {
        for (const quint32 number : {start << 16, start << 16 | 0xFFFF})
            ASSERT_EQ(v4(number).isBlocked(), isInABlockedRange(number)) << std::hex << number;
    }
}

TEST(IPAddress, whatTheListLeavesOutPasses) {
    for (const QString &text : {u"100.64.0.1"_s,
                                u"100.127.255.255"_s,
                                u"192.0.0.1"_s,
                                u"192.0.2.1"_s,
                                u"198.18.0.1"_s,
                                u"198.51.100.1"_s,
                                u"203.0.113.1"_s,
                                u"224.0.0.1"_s,
                                u"239.255.255.250"_s,
                                u"240.0.0.1"_s,
                                u"255.255.255.255"_s,
                                u"8.8.8.8"_s,
                                u"172.15.255.255"_s,
                                u"172.32.0.0"_s,
                                u"::"_s,
                                u"::127.0.0.1"_s,
                                u"::10.0.0.1"_s,
                                u"::2"_s,
                                u"::fffe:127.0.0.1"_s,
                                u"::ffff:0:127.0.0.1"_s,
                                u"1::ffff:127.0.0.1"_s,
                                u"64:ff9b::127.0.0.1"_s,
                                u"2002:7f00:1::"_s,
                                u"2001:db8::1"_s,
                                u"fec0::1"_s,
                                u"feff:ffff::"_s,
                                u"fe7f:ffff::"_s,
                                u"fe00::1"_s,
                                u"fbff:ffff::"_s,
                                u"fe00::"_s,
                                u"ff00::"_s,
                                u"ff02::1"_s,
                                u"2606:4700::1111"_s})
        EXPECT_FALSE(isBlocked(text)) << text.toStdString();
}

TEST(IPAddress, ofVersionSixIsBlockedByItsBeginning) {
    for (const QString &text : {u"::1"_s, u"fc00::"_s, u"fcff::1"_s, u"fd00::"_s, u"fdff:ffff:ffff::ffff"_s,
                                u"fe80::"_s, u"fe80::1"_s, u"fea0::1"_s, u"febf:ffff::"_s})
        EXPECT_TRUE(isBlocked(text)) << text.toStdString();
    std::mt19937 random(7);
    for (int start = 0; start <= 0xFFFF; ++start) {
        QByteArray bytes(16, '\0');
        for (char &byte : bytes)
            byte = static_cast<char>(random());
        qToBigEndian(static_cast<quint16>(start), bytes.data());
        bytes[5] = 1;
        ASSERT_EQ(IPAddress(bytes).isBlocked(), (start & 0xFE00) == 0xFC00 || (start & 0xFFC0) == 0xFE80)
            << bytes.toHex().toStdString();
    }
}

TEST(IPAddress, thatMapsVersionFourIsJudgedAsThat) {
    for (const Range &range : blockedRanges) {
        for (const quint32 number : {range.network - 1, range.network, range.last(), range.last() + 1}) {
            const IPAddress inner = v4(number);
            EXPECT_EQ(IPAddress(QByteArray(10, '\0') + "\xFF\xFF" + inner.bytes()).isBlocked(),
                      inner.isBlocked());
            EXPECT_FALSE(IPAddress(QByteArray(10, '\0') + "\xFF\xFE" + inner.bytes()).isBlocked());
            EXPECT_FALSE(IPAddress(QByteArray(9, '\0') + "\1\xFF\xFF" + inner.bytes()).isBlocked());
        }
    }
    EXPECT_TRUE(isBlocked(u"::ffff:7f00:1"_s));
    EXPECT_TRUE(isBlocked(u"0:0:0:0:0:FFFF:10.0.0.1"_s));
    EXPECT_FALSE(isBlocked(u"::ffff:8.8.8.8"_s));
}
