#include "platform/linux/Bus.h"

#include "support/EnvironmentVariable.h"
#include "support/PrivateBus.h"

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
