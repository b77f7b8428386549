#include "records/ChatStore.h"

#include "records/ConversationCoding.h"
#include "records/Folders.h"
#include "records/JsonFields.h"
#include "records/Samples.h"
#include "support/TemporaryApplicationFolder.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using Samples::conversation;
using Samples::moment;

namespace {

using Rows = QList<ConversationSummary>;

class ChatStoreTest : public ::testing::Test {
protected:
    ChatStoreTest() { ensureFolders(); }

    /// Puts a chat's file where it belongs without touching the index.
    static Conversation putChat(const Conversation &chat) {
        Samples::putFile(chatFile(chat.id), encodeRecord(chat));
        return chat;
    }

    static Rows rowsOnDisk() { return decodeRecord<Rows>(Samples::contentOf(chatIndexFile())); }

    static QStringList titles(const Rows &rows) {
        QStringList titles;
        for (const ConversationSummary &row : rows)
            titles.append(row.title);
        return titles;
    }

    static ConversationSummary row(const QString &title, qint64 seconds) {
        return {QUuid::createUuid(), title, moment(seconds), 0};
    }

    static QStringList filesOnDisk() {
        return QDir(chatsFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    const TemporaryApplicationFolder m_folder;
    const ChatStore m_store{};
};

} // namespace

TEST_F(ChatStoreTest, aSavedChatIsLoadedAsItWas) {
    const Conversation chat = Samples::fullConversation();
    m_store.save(chat);
    EXPECT_EQ(m_store.load(chat.id), chat);
    EXPECT_EQ(Samples::contentOf(chatFile(chat.id)), encodeRecord(chat));
    EXPECT_EQ(filesOnDisk(), (QStringList{u"5F0C1B9E-6F0A-4A53-9D3E-0C6A8F1F2B11.json"_s, u"index.json"_s}));
}

TEST_F(ChatStoreTest, aChatThatIsMissingOrDamagedIsNothing) {
    EXPECT_EQ(m_store.load(Samples::firstId), std::nullopt);
    for (const char *text : {"", "oops", "[]", "{}"}) {
        Samples::putFile(chatFile(Samples::firstId), text);
        EXPECT_EQ(m_store.load(Samples::firstId), std::nullopt);
        EXPECT_EQ(Samples::contentOf(chatFile(Samples::firstId)), text);
    }
}

TEST_F(ChatStoreTest, theListIsNewestFirstAndTheOrderOnDiskStays) {
    const Rows rows{row(u"old"_s, 0), row(u"new"_s, 20), row(u"middle"_s, 10)};
    m_store.writeIndex(rows);
    const QByteArray before = Samples::contentOf(chatIndexFile());
    EXPECT_EQ(titles(m_store.list()), (QStringList{u"new"_s, u"middle"_s, u"old"_s}));
    EXPECT_EQ(Samples::contentOf(chatIndexFile()), before);
    EXPECT_EQ(rowsOnDisk(), rows);
}

TEST_F(ChatStoreTest, rowsOfTheSameDateKeepTheirOrder) {
    Rows rows;
    QStringList expected;
    for (int index = 0; index < 100; ++index) {
        rows.append(row(QString::number(index), 0));
        expected.append(QString::number(index));
    }
    m_store.writeIndex(rows);
    EXPECT_EQ(titles(m_store.list()), expected);
}

TEST_F(ChatStoreTest, aMissingIndexIsRebuiltFromTheChatFiles) {
    putChat(conversation(Samples::firstId, moment(1), u"older"_s, {u"twelve chars"_s}));
    putChat(conversation(Samples::secondId, moment(2), u"newer"_s));
    const Rows rows = m_store.list();
    EXPECT_EQ(titles(rows), (QStringList{u"newer"_s, u"older"_s}));
    EXPECT_EQ(rows.last().characterCount, 3);
    EXPECT_EQ(rowsOnDisk().size(), 2);
}

TEST_F(ChatStoreTest, aDamagedIndexIsRebuiltFromTheChatFiles) {
    putChat(conversation(Samples::firstId, moment(), u"chat"_s));
    for (const char *text : {"oops", "", "{}", "[{}]", "[1]"}) {
        Samples::putFile(chatIndexFile(), text);
        EXPECT_EQ(titles(m_store.list()), QStringList{u"chat"_s}) << text;
        EXPECT_EQ(titles(rowsOnDisk()), QStringList{u"chat"_s}) << text;
    }
}

TEST_F(ChatStoreTest, aSoundIndexIsBelievedWhateverTheFilesAre) {
    putChat(conversation(Samples::firstId, moment(), u"chat"_s));
    m_store.writeIndex({row(u"row without a file"_s, 0)});
    EXPECT_EQ(titles(m_store.list()), QStringList{u"row without a file"_s});
}

TEST_F(ChatStoreTest, aSavedChatHasOneRowAtTheEnd) {
    m_store.save(conversation(Samples::firstId, moment(50), u"first"_s));
    m_store.save(conversation(Samples::secondId, moment(1), u"second"_s));
    EXPECT_EQ(titles(rowsOnDisk()), (QStringList{u"first"_s, u"second"_s}));
    m_store.save(conversation(Samples::firstId, moment(60), u"first again"_s));
    m_store.save(conversation(Samples::firstId, moment(60), u"first again"_s));
    EXPECT_EQ(titles(rowsOnDisk()), (QStringList{u"second"_s, u"first again"_s}));
}

TEST_F(ChatStoreTest, aSaveTakesTheOtherRowsAsTheyAreListed) {
    m_store.writeIndex({row(u"old"_s, 1), row(u"new"_s, 2)});
    m_store.save(conversation(Samples::firstId, moment(), u"saved"_s));
    EXPECT_EQ(titles(rowsOnDisk()), (QStringList{u"new"_s, u"old"_s, u"saved"_s}));
}

TEST_F(ChatStoreTest, aSaveRemovesEveryRowOfTheChat) {
    const Conversation chat = conversation(Samples::firstId, moment(), u"chat"_s);
    m_store.writeIndex({summaryOf(chat), row(u"other"_s, 0), summaryOf(chat)});
    m_store.save(chat);
    EXPECT_EQ(titles(rowsOnDisk()), (QStringList{u"other"_s, u"chat"_s}));
}

TEST_F(ChatStoreTest, theRowTellsTheChatsTitleDateAndCount) {
    m_store.save(conversation(Samples::firstId, moment(7), u"chat"_s, {u"1234567"_s, u"890"_s}));
    EXPECT_EQ(rowsOnDisk(), (Rows{{Samples::firstId, u"chat"_s, moment(7), 2}}));
}

TEST_F(ChatStoreTest, aSaveLeavesTheDateToTheCaller) {
    const Conversation chat = conversation(Samples::firstId, moment(-1000000), u"chat"_s);
    m_store.save(chat);
    EXPECT_EQ(m_store.load(chat.id)->updatedAt, chat.updatedAt);
}

TEST_F(ChatStoreTest, aChatThatCannotBeEncodedIsNotWrittenAndHasNoRow) {
    m_store.save(conversation(Samples::firstId, moment(), u"chat"_s));
    const QByteArray file = Samples::contentOf(chatFile(Samples::firstId));
    const QByteArray index = Samples::contentOf(chatIndexFile());
    Conversation undated = conversation(Samples::firstId, moment(5), u"undated"_s);
    undated.createdAt = QDateTime();
    m_store.save(undated);
    EXPECT_EQ(Samples::contentOf(chatFile(Samples::firstId)), file);
    EXPECT_EQ(Samples::contentOf(chatIndexFile()), index);
}

TEST_F(ChatStoreTest, aChatFileThatCannotBeWrittenGetsItsRowAllTheSame) {
    ensureFolder(chatFile(Samples::firstId));
    m_store.save(conversation(Samples::firstId, moment(), u"chat"_s));
    EXPECT_EQ(titles(rowsOnDisk()), QStringList{u"chat"_s});
    EXPECT_EQ(m_store.load(Samples::firstId), std::nullopt);
    EXPECT_EQ(filesOnDisk().size(), 2);
}

TEST_F(ChatStoreTest, aSaveIntoADamagedStoreHealsIt) {
    putChat(conversation(Samples::secondId, moment(), u"other"_s));
    Samples::putFile(chatIndexFile(), "oops");
    m_store.save(conversation(Samples::firstId, moment(), u"chat"_s));
    EXPECT_EQ(titles(rowsOnDisk()), (QStringList{u"other"_s, u"chat"_s}));
}

TEST_F(ChatStoreTest, aRemovedChatLosesItsFileAndItsRow) {
    m_store.save(conversation(Samples::firstId, moment(), u"first"_s));
    m_store.save(conversation(Samples::secondId, moment(), u"second"_s));
    m_store.remove(Samples::firstId);
    EXPECT_EQ(m_store.load(Samples::firstId), std::nullopt);
    EXPECT_EQ(titles(rowsOnDisk()), QStringList{u"second"_s});
    EXPECT_EQ(filesOnDisk().size(), 2);
}

TEST_F(ChatStoreTest, removingAnUnknownChatChangesNoRowButWritesTheIndex) {
    m_store.save(conversation(Samples::firstId, moment(), u"first"_s));
    const Rows before = m_store.list();
    QFile::remove(chatIndexFile());
    m_store.remove(Samples::secondId);
    EXPECT_EQ(rowsOnDisk(), before);
    Samples::putFile(chatIndexFile(), encodeRecord(before).simplified());
    m_store.remove(Samples::secondId);
    EXPECT_EQ(Samples::contentOf(chatIndexFile()), encodeRecord(before));
}

TEST_F(ChatStoreTest, aRebuildTakesOnlySoundFilesOfTheExactExtension) {
    const QByteArray sound = encodeRecord(conversation(Samples::firstId, moment(), u"sound"_s));
    for (const QString &name : {u"notes.txt"_s, u"index.JSON"_s, u"chat.JSON"_s, u"json"_s, u".json"_s,
                                u"chat.json.tmp"_s, u"index.json"_s, u"chat.jsonx"_s})
        Samples::putFile(chatsFolder() + u'/' + name, sound);
    Samples::putFile(chatsFolder() + u"/damaged.json"_s, "oops");
    ensureFolder(chatsFolder() + u"/folder.json"_s);
    EXPECT_EQ(m_store.rebuildIndex(), Rows());
    EXPECT_EQ(filesOnDisk().size(), 10);
    Samples::putFile(chatsFolder() + u"/any name.json"_s, sound);
    EXPECT_EQ(titles(m_store.rebuildIndex()), QStringList{u"sound"_s});
}

TEST_F(ChatStoreTest, aRebuildWritesTheOrderOfTheFolderAndGivesTheNewestFirst) {
    for (int index = 0; index < 50; ++index)
        putChat(conversation(QUuid::createUuid(), moment(index), QString::number(index)));
    const Rows rows = m_store.rebuildIndex();
    for (int index = 0; index < 50; ++index)
        EXPECT_EQ(rows[index].title, QString::number(49 - index));
    Rows inTheFoldersOrder;
    for (const QString &file : QDir(chatsFolder()).entryList(QDir::Files, QDir::Unsorted)) {
        if (file != u"index.json"_s)
            inTheFoldersOrder.append(summaryOf(*m_store.load(QUuid(file.chopped(5)))));
    }
    EXPECT_EQ(rowsOnDisk(), inTheFoldersOrder);
    EXPECT_EQ(m_store.rebuildIndex(), rows);
}

TEST_F(ChatStoreTest, aFileUnderAnotherNameIsListedUnderTheIdInsideIt) {
    Samples::putFile(chatFile(Samples::secondId),
                     encodeRecord(conversation(Samples::firstId, moment(), u"chat"_s)));
    EXPECT_EQ(m_store.rebuildIndex().first().id, Samples::firstId);
    EXPECT_EQ(m_store.load(Samples::firstId), std::nullopt);
}

TEST_F(ChatStoreTest, aFolderThatCannotBeReadIsAnEmptyList) {
    QDir(chatsFolder()).removeRecursively();
    EXPECT_EQ(m_store.list(), Rows());
    m_store.save(conversation(Samples::firstId, moment(), u"chat"_s));
    EXPECT_EQ(m_store.list(), Rows());
    m_store.remove(Samples::firstId);
    m_store.writeIndex({});
    ensureFolders();
    EXPECT_EQ(m_store.list(), Rows());
    EXPECT_EQ(rowsOnDisk(), Rows());
}

TEST_F(ChatStoreTest, anIndexThatCannotBeWrittenOrEncodedIsPassedOverInSilence) {
    m_store.writeIndex({row(u"sound"_s, 0)});
    m_store.writeIndex({{Samples::firstId, u"undated"_s, QDateTime(), 0}});
    EXPECT_EQ(titles(rowsOnDisk()), QStringList{u"sound"_s});
    QFile::remove(chatIndexFile());
    ensureFolder(chatIndexFile());
    m_store.save(conversation(Samples::firstId, moment(), u"chat"_s));
    EXPECT_EQ(titles(m_store.list()), QStringList{u"chat"_s});
}

TEST_F(ChatStoreTest, chatsAreForTheirOwnersEyesOnly) {
    m_store.save(conversation(Samples::firstId, moment(), u"chat"_s));
    for (const QString &path : {chatFile(Samples::firstId), chatIndexFile()})
        EXPECT_EQ(QFile::permissions(path) & QFile::Permissions(0x0077), QFile::Permissions())
            << path.toStdString();
}
