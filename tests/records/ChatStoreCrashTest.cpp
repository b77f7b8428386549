#include "records/ChatStore.h"
#include "records/ConversationCoding.h"
#include "records/Folders.h"
#include "records/JsonFields.h"
#include "records/Samples.h"
#include "support/TemporaryApplicationFolder.h"

#include <QDir>

#include <chrono>
#include <csignal>
#include <random>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// The saver at work, from its first whole save on until it is killed. Started by posix_spawn, since the
/// vfork() of QProcess leads the thread sanitizer astray for all tests that follow.
class Saver {
public:
    Saver() {
        int ends[2];
        if (pipe(ends) != 0)
            return;
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        posix_spawn_file_actions_addclose(&actions, ends[0]);
        std::string program = RECORDS_SAVER;
        char *const arguments[] = {program.data(), nullptr};
        m_started = posix_spawn(&m_process, program.c_str(), &actions, nullptr, arguments, environ) == 0;
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        char byte = 0;
        m_started = m_started && read(ends[0], &byte, 1) == 1;
        close(ends[0]);
    }

    bool hasStarted() const { return m_started; }

    /// Whether the kill was what ended it.
    bool kill() {
        int status = 0;
        ::kill(m_process, SIGKILL);
        return waitpid(m_process, &status, 0) == m_process && WIFSIGNALED(status) &&
               WTERMSIG(status) == SIGKILL;
    }

private:
    pid_t m_process = 0;
    bool m_started = false;
};

/// Runs the saver and kills it somewhere in its work.
void saveAndKill(std::chrono::microseconds after) {
    Saver saver;
    ASSERT_TRUE(saver.hasStarted());
    std::this_thread::sleep_for(after);
    ASSERT_TRUE(saver.kill());
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
