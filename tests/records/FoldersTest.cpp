#include "records/Folders.h"

#include "platform/AtomicFile.h"
#include "records/Samples.h"
#include "support/TemporaryApplicationFolder.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Folders, everyPathLiesInTheApplicationFolder) {
    const TemporaryApplicationFolder folder;
    const QString root = folder.dataHome() + u"/Ostrelin"_s;
    EXPECT_EQ(applicationFolder(), root);
    EXPECT_EQ(modelsFolder(), root + u"/models"_s);
    EXPECT_EQ(chatsFolder(), root + u"/chats"_s);
    EXPECT_EQ(pagesFolder(), root + u"/pages"_s);
    EXPECT_EQ(schedulesFile(), root + u"/schedules.json"_s);
    EXPECT_EQ(memoryFile(), root + u"/memory.md"_s);
    EXPECT_EQ(enginePidFile(), root + u"/engine.pid"_s);
    EXPECT_EQ(settingsFile(), root + u"/settings.json"_s);
    EXPECT_EQ(chatIndexFile(), root + u"/chats/index.json"_s);
    EXPECT_EQ(chatFile(Samples::firstId), root + u"/chats/5F0C1B9E-6F0A-4A53-9D3E-0C6A8F1F2B11.json"_s);
    EXPECT_EQ(pageFile(Samples::firstId), root + u"/pages/5F0C1B9E-6F0A-4A53-9D3E-0C6A8F1F2B11.json"_s);
}

TEST(Folders, askingForAPathCreatesNothing) {
    const TemporaryApplicationFolder folder;
    pagesFolder();
    chatFile(Samples::firstId);
    EXPECT_FALSE(QFileInfo::exists(applicationFolder()));
}

TEST(Folders, modelsAndChatsAreCreatedAndPagesNot) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    EXPECT_EQ(QDir(applicationFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              (QStringList{u"chats"_s, u"models"_s}));
    ensureFolders();
}

TEST(Folders, aMissingFolderOfPagesIsCreatedIfItCanBe) {
    const TemporaryApplicationFolder folder;
    ensurePagesFolder();
    EXPECT_TRUE(QFileInfo(pagesFolder()).isDir());
    ASSERT_TRUE(QDir(pagesFolder()).removeRecursively());
    Samples::putFile(pagesFolder(), "in the way");
    EXPECT_NO_THROW(ensurePagesFolder());
}

TEST(Folders, whatAKilledWriterLeftInOneIsRemovedOnceItIsOld) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    ensurePagesFolder();
    for (const QString &each : {applicationFolder(), modelsFolder(), chatsFolder(), pagesFolder()}) {
        QFile left(each + u"/.ostrelin-0123.tmp"_s);
        ASSERT_TRUE(left.open(QIODevice::WriteOnly));
        ASSERT_TRUE(left.setFileTime(QDateTime::currentDateTime().addSecs(-3'700),
                                     QFileDevice::FileModificationTime));
        ensureFolders();
        EXPECT_FALSE(left.exists()) << each.toStdString();
    }
}

TEST(Folders, foldersAboveThatAreMissingAreCreatedToo) {
    const TemporaryApplicationFolder folder;
    const QString deep = folder.dataHome() + u"/a/b/c"_s;
    ensureFolder(deep);
    EXPECT_TRUE(QFileInfo(deep).isDir());
}

TEST(Folders, aNewFolderIsForItsOwnersEyesOnlyAndAnOldOneIsLeftAsItIs) {
    const TemporaryApplicationFolder folder;
    const auto forOthers = QFile::ReadOther | QFile::ExeOther | QFile::ReadGroup | QFile::ExeGroup;
    ensureFolder(applicationFolder());
    EXPECT_FALSE(QFile::permissions(applicationFolder()) & forOthers);
    const auto open = QFile::permissions(applicationFolder()) | forOthers;
    QFile::setPermissions(applicationFolder(), open);
    ensureFolder(applicationFolder());
    EXPECT_EQ(QFile::permissions(applicationFolder()), open);
}

TEST(Folders, modelsAreMarkedAsNotWorthABackup) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    EXPECT_TRUE(Samples::contentOf(modelsFolder() + u"/CACHEDIR.TAG"_s)
                    .startsWith("Signature: 8a477f597d28d172789f06886806bc55"));
    EXPECT_FALSE(QFileInfo::exists(chatsFolder() + u"/CACHEDIR.TAG"_s));
}

TEST(Folders, aMarkThatWasDamagedIsWrittenAnew) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    Samples::putFile(modelsFolder() + u"/CACHEDIR.TAG"_s, "x");
    ensureFolders();
    EXPECT_TRUE(Samples::contentOf(modelsFolder() + u"/CACHEDIR.TAG"_s).startsWith("Signature: "));
}

TEST(Folders, theFirstFailureEndsIt) {
    const TemporaryApplicationFolder folder;
    ensureFolder(applicationFolder());
    Samples::putFile(modelsFolder(), "in the way");
    EXPECT_THROW(ensureFolders(), FileError);
    EXPECT_FALSE(QFileInfo::exists(chatsFolder()));
}

TEST(Folders, anApplicationFolderThatCannotBeIsAFailure) {
    const TemporaryApplicationFolder folder;
    Samples::putFile(applicationFolder(), "in the way");
    EXPECT_THROW(ensureFolders(), FileError);
}

TEST(Folders, aMarkThatCannotBeWrittenIsAFailureOfTheLastStep) {
    const TemporaryApplicationFolder folder;
    ensureFolder(modelsFolder() + u"/CACHEDIR.TAG"_s);
    EXPECT_THROW(ensureFolders(), FileError);
    EXPECT_TRUE(QFileInfo(chatsFolder()).isDir());
}
