#include "platform/linux/Bus.h"

#include "platform/linux/BusGreeting.h"
#include "support/EnvironmentVariable.h"
#include "support/PrivateBus.h"
#include "support/SilentBus.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(SessionBusAddress, theEnvironmentNamesIt) {
    const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", "unix:path=/some/bus");
    EXPECT_EQ(sessionBusAddress(), u"unix:path=/some/bus"_s);
}

TEST(SessionBusAddress, aBusThatWouldHaveToBeStartedIsNone) {
    for (const char *value : {"autolaunch:", "autolaunch:scope=*user", "unix:path=/x;autolaunch:"}) {
        const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", value);
        EXPECT_TRUE(sessionBusAddress().isEmpty()) << value;
    }
}

TEST(SessionBusAddress, withoutANameItIsTheSocketInTheRuntimeFolder) {
    const QTemporaryDir folder;
    const QString runtime = folder.filePath(u"a b~ü"_s);
    QDir().mkdir(runtime);
    const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", "");
    const EnvironmentVariable variable("XDG_RUNTIME_DIR", runtime.toUtf8());
    EXPECT_TRUE(sessionBusAddress().isEmpty());
    ASSERT_TRUE(QFile(runtime + u"/bus"_s).open(QIODevice::WriteOnly));
    EXPECT_EQ(sessionBusAddress(), "unix:path="_L1 + folder.path() + "/a%20b%7E%C3%BC/bus"_L1);
}

TEST(SessionBusAddress, withoutARuntimeFolderThereIsNone) {
    const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", "");
    const EnvironmentVariable variable("XDG_RUNTIME_DIR", "");
    EXPECT_TRUE(sessionBusAddress().isEmpty());
}

TEST(SessionBus, theConnectionIsSharedAndNeededOnlyWhereThereIsABus) {
    const PrivateBus bus;
    {
        const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
        EXPECT_TRUE(sessionBus().isConnected());
        EXPECT_EQ(sessionBus().baseService(), sessionBus().baseService());
    }
    for (const char *value : {"unix:path=/nowhere/bus", "autolaunch:", "nonsense"}) {
        const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", value);
        EXPECT_FALSE(sessionBus().isConnected()) << value;
    }
}

TEST(SessionBus, oneThatNeverAnswersIsNone) {
    const SilentBus bus;
    const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    for (int count = 0; count < 3; ++count)
        EXPECT_FALSE(sessionBus().isConnected());
}

TEST(BusGreeting, theFirstSocketThatIsThereCounts) {
    const PrivateBus bus;
    const SilentBus silent;
    EXPECT_TRUE(answersGreeting(bus.address()));
    EXPECT_TRUE(answersGreeting(bus.address() + u",guid=0123"_s));
    EXPECT_TRUE(answersGreeting(u"unix:path=/nowhere/bus;"_s + bus.address()));
    EXPECT_FALSE(answersGreeting(u"unix:path=/nowhere/bus;"_s + silent.address()));
    EXPECT_TRUE(answersGreeting(QString(bus.address()).replace(u"bus"_s, u"%62us"_s)));
}

TEST(BusGreeting, whatNamesNoSocketIsNotJudged) {
    for (const QString &address : {QString(), u";"_s, u"nonsense"_s, u"unix:"_s, u"unix:path"_s,
                                   u"unix:path="_s, u"unix:tmpdir=/tmp"_s, u"unix:abstract=nobody-is-there"_s,
                                   u"tcp:host=localhost,port=1"_s, u"unix:path=/"_s + QString(200, u'x')})
        EXPECT_TRUE(answersGreeting(address)) << address.toStdString();
}
