#include "records/ChatStore.h"
#include "records/ConversationCoding.h"
#include "records/Folders.h"
#include "records/JsonFields.h"
#include "records/Samples.h"
#include "support/TemporaryApplicationFolder.h"

#include <QDir>
#include <QProcess>

#include <chrono>
#include <random>
#include <thread>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Runs the saver and kills it somewhere in its work.
void saveAndKill(std::chrono::microseconds after) {
    QProcess saver;
    saver.start(QStringLiteral(RECORDS_SAVER), QStringList());
    ASSERT_TRUE(saver.waitForReadyRead()) << saver.errorString().toStdString();
    std::this_thread::sleep_for(after);
    saver.kill();
    ASSERT_TRUE(saver.waitForFinished());
    ASSERT_EQ(saver.exitStatus(), QProcess::CrashExit);
}

void expectEveryFileWhole() {
    const QStringList files = QDir(chatsFolder()).entryList({u"*.json"_s});
    ASSERT_TRUE(files.contains(u"index.json"_s));
    for (const QString &name : files) {
        const QByteArray text = Samples::contentOf(chatsFolder() + u'/' + name);
        if (name == u"index.json"_s)
            ASSERT_NO_THROW(decodeRecord<QList<ConversationSummary>>(text));
        else
            ASSERT_NO_THROW(decodeRecord<Conversation>(text)) << name.toStdString();
    }
}

} // namespace

TEST(ChatStoreCrash, aProcessKilledWhileSavingNeverTearsAFile) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        saveAndKill(std::chrono::microseconds(random() % 15000));
        ASSERT_FALSE(HasFatalFailure());
        expectEveryFileWhole();
        ASSERT_FALSE(HasFatalFailure()) << "in round " << round;
    }
    EXPECT_EQ(ChatStore().rebuildIndex().size(), 5);
}
