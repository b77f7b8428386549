#include "platform/FileManager.h"

#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusError>
#include <QDesktopServices>
#include <QDir>
#include <QTemporaryDir>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

/// A desktop's file manager on a bus.
class Manager : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    enum class Manner { shows, fails };

    explicit Manager(const QString &bus, Manner manner = Manner::shows)
        : m_manner(manner),
          m_bus(QDBusConnection::connectToBus(bus, "files "_L1 + bus)) {
        EXPECT_TRUE(
            m_bus.registerObject(u"/org/freedesktop/FileManager1"_s, this, QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(m_bus.registerService(u"org.freedesktop.FileManager1"_s));
    }
    // The connection ends with its bus.
    ~Manager() override { m_bus.unregisterObject(u"/org/freedesktop/FileManager1"_s); }

    QList<QStringList> shown;

public Q_SLOTS:
    void ShowItems(const QStringList &addresses, const QString &) {
        shown.append(addresses);
        if (m_manner == Manner::fails)
            sendErrorReply(QDBusError::Failed, u"no window"_s);
    }

private:
    Manner m_manner;
    QDBusConnection m_bus;
};

/// Sees which folders would be opened, in the place of the desktop.
class Desktop : public QObject {
    Q_OBJECT

public:
    Desktop() { QDesktopServices::setUrlHandler(u"file"_s, this, "open"); }
    ~Desktop() override { QDesktopServices::unsetUrlHandler(u"file"_s); }

    QStringList opened;

public Q_SLOTS:
    void open(const QUrl &address) { opened.append(address.toLocalFile()); }
};

class FileManagerTest : public ::testing::Test {
protected:
    PrivateBus bus;
    EnvironmentVariable address{"DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8()};
    Desktop desktop;
};

} // namespace

TEST_F(FileManagerTest, theFileIsShownByItsAddress) {
    const Manager manager(bus.address());
    revealFile(u"/tmp/Grüße & 100%/a #1?.pdf"_s);
    ASSERT_TRUE(eventually([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown.first(),
              QStringList{u"file:///tmp/Gr%C3%BC%C3%9Fe%20&%20100%25/a%20%231%3F.pdf"_s});
    letPass(50);
    EXPECT_TRUE(desktop.opened.isEmpty());
}

TEST_F(FileManagerTest, aRelativePathIsMadeWhole) {
    const Manager manager(bus.address());
    revealFile(u"page.pdf"_s);
    ASSERT_TRUE(eventually([&] { return !manager.shown.isEmpty(); }));
    const QUrl expected = QUrl::fromLocalFile(QDir::current().absoluteFilePath(u"page.pdf"_s));
    EXPECT_EQ(manager.shown.first(), QStringList{expected.toString(QUrl::FullyEncoded)});
}

TEST_F(FileManagerTest, aFileManagerThatFailsIsReplacedByTheFolder) {
    const Manager manager(bus.address(), Manager::Manner::fails);
    revealFile(u"/tmp/chats/page.pdf"_s);
    EXPECT_TRUE(eventually([&] { return desktop.opened.contains(u"/tmp/chats"_s); }));
}

TEST_F(FileManagerTest, aDesktopWithoutAFileManagerOpensTheFolder) {
    revealFile(u"/tmp/chats/page.pdf"_s);
    EXPECT_TRUE(eventually([&] { return desktop.opened.contains(u"/tmp/chats"_s); }));
}

TEST_F(FileManagerTest, withoutABusTheFolderIsOpened) {
    const EnvironmentVariable nowhere("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
    revealFile(u"/tmp/chats/page.pdf"_s);
    EXPECT_EQ(desktop.opened, QStringList{u"/tmp/chats"_s});
}

TEST(FileManager, withoutAnythingToOpenItNothingHappens) {
    const EnvironmentVariable nowhere("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
    revealFile(u"/tmp/chats/page.pdf"_s);
}

#include "FileManagerTest.moc"
