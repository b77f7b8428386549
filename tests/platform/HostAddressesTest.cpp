#include "platform/HostAddresses.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray hex(const std::optional<QByteArray> &bytes) {
    return bytes ? bytes->toHex(' ') : "none";
}

const QByteArray loopback("\x7F\0\0\1", 4);

} // namespace

TEST(AddressSpelledOut, isFourBytesOrSixteenInTheOrderInWhichTheyAreWritten) {
    EXPECT_EQ(hex(addressSpelledOut(u"1.2.30.255"_s)), "01 02 1e ff");
    EXPECT_EQ(hex(addressSpelledOut(u"2001:db8::1:2"_s)), "20 01 0d b8 00 00 00 00 00 00 00 00 00 01 00 02");
    EXPECT_EQ(hex(addressSpelledOut(u"::FFFF:1.2.3.4"_s)), "00 00 00 00 00 00 00 00 00 00 ff ff 01 02 03 04");
}

TEST(AddressSpelledOut, isNothingElse) {
    for (const QString &text :
         {u""_s, u":"_s, u"1"_s, u"1.2.3"_s, u"1.2.3.4."_s, u"1.2.3.256"_s, u"01.2.3.4"_s, u"0x1.2.3.4"_s,
          u" 1.2.3.4"_s, u"1.2.3.4 "_s, u"[::1]"_s, u"::1%1"_s, u"::1::"_s, u"1.2.3.4:80"_s, u"localhost"_s,
          u"\uFF11.2.3.4"_s, u"1.2.3.4\0"_s, u"::1\0x"_s})
        EXPECT_EQ(hex(addressSpelledOut(text)), "none") << text.toStdString();
}

TEST(AddressesOfHost, theOwnMachineIsKnownWithoutANetwork) {
    EXPECT_TRUE(addressesOfHost(u"localhost"_s).value().contains(loopback));
}

TEST(AddressesOfHost, aNumberInAnyFormIsAnAddressToTheSystem) {
    for (const QString &name : {u"127.0.0.1"_s, u"2130706433"_s, u"0x7f.1"_s, u"0177.0.0.1"_s, u"127.1"_s})
        EXPECT_EQ(addressesOfHost(name).value(), QList{loopback}) << name.toStdString();
    EXPECT_EQ(hex(addressesOfHost(u"::1%1"_s).value().first()), hex(addressSpelledOut(u"::1"_s)));
}

TEST(AddressesOfHost, aNameThatNobodyHasGivesNothing) {
    for (const QString &name : {u"nobody.invalid"_s, u""_s, u"a b"_s, u"localhost\0.example"_s})
        EXPECT_FALSE(addressesOfHost(name)) << name.toStdString();
}
