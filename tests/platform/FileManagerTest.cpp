#include "platform/FileManager.h"

#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/FileManagerService.h"
#include "support/PrivateBus.h"

#include <QDesktopServices>
#include <QDir>
#include <QTemporaryDir>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

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
    const FileManagerService manager(bus.address());
    revealFile(u"/tmp/Grüße & 100%/a #1?.pdf"_s);
    ASSERT_TRUE(eventually([&] { return !manager.shown().isEmpty(); }));
    EXPECT_EQ(manager.shown().first(),
              QStringList{u"file:///tmp/Gr%C3%BC%C3%9Fe%20&%20100%25/a%20%231%3F.pdf"_s});
    letPass(50);
    EXPECT_TRUE(desktop.opened.isEmpty());
}

TEST_F(FileManagerTest, aRelativePathIsMadeWhole) {
    const FileManagerService manager(bus.address());
    revealFile(u"page.pdf"_s);
    ASSERT_TRUE(eventually([&] { return !manager.shown().isEmpty(); }));
    const QUrl expected = QUrl::fromLocalFile(QDir::current().absoluteFilePath(u"page.pdf"_s));
    EXPECT_EQ(manager.shown().first(), QStringList{expected.toString(QUrl::FullyEncoded)});
}

TEST_F(FileManagerTest, aFileManagerThatFailsIsReplacedByTheFolder) {
    const FileManagerService manager(bus.address(), FileManagerService::Manner::fails);
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
