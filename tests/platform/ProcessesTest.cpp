#include "platform/Processes.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <memory>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Copies of an executable that looks for others of its own, in a folder of the test's.
class AnotherInstance : public ::testing::Test {
protected:
    AnotherInstance() { install(); }
    ~AnotherInstance() override { endAll(); }

    /// Puts a new file in the place of the executable.
    void install() const {
        QFile::remove(path());
        EXPECT_TRUE(QFile::copy(QStringLiteral(INSTANCE_FINDER), path()));
    }

    QString path() const { return folder.filePath(u"finder"_s); }

    /// Starts one more, and gives what it finds.
    QByteArray start() {
        running.push_back(std::make_unique<QProcess>());
        QProcess &process = *running.back();
        process.start(path(), QStringList());
        EXPECT_TRUE(process.waitForReadyRead());
        return process.readAll().trimmed();
    }

    void endAll() {
        for (const auto &process : running) {
            process->kill();
            process->waitForFinished();
        }
        running.clear();
    }

    QTemporaryDir folder;
    std::vector<std::unique_ptr<QProcess>> running;
};

} // namespace

TEST(ProcessPath, ourOwnIsOurExecutable) {
    EXPECT_EQ(processPath(QCoreApplication::applicationPid()),
              QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath());
}

TEST(ProcessPath, aProcessThatDoesNotExistHasNone) {
    EXPECT_TRUE(processPath(0).isEmpty());
    EXPECT_TRUE(processPath(-1).isEmpty());
    EXPECT_TRUE(processPath(4'194'305).isEmpty()) << "above the highest id that the kernel gives";
}

TEST(SignallingAProcess, aGroupIsNeverMeant) {
    // Zero would be this test's own group, and minus one everybody.
    terminateProcess(0);
    terminateProcess(-1);
    killProcess(0);
    killProcess(-1);
}

TEST_F(AnotherInstance, isOneThatRunsTheSameExecutable) {
    EXPECT_EQ(start(), "alone");
    EXPECT_EQ(start(), "another");
    endAll();
    EXPECT_EQ(start(), "alone");
}

TEST_F(AnotherInstance, isAlsoOneWhoseExecutableWasReplacedMeanwhile) {
    EXPECT_EQ(start(), "alone");
    install();
    EXPECT_EQ(start(), "another");
}

TEST_F(AnotherInstance, isNoneThatHasEndedAndIsNotYetReaped) {
    EXPECT_EQ(start(), "alone");
    running.back()->kill();
    while (!processPath(running.back()->processId()).isEmpty())
        QThread::msleep(1);
    EXPECT_EQ(start(), "alone");
}

TEST_F(AnotherInstance, isNoneOfAnotherExecutable) {
    EXPECT_EQ(start(), "alone");
    const QString other = folder.filePath(u"other"_s);
    ASSERT_TRUE(QFile::copy(path(), other));
    QProcess process;
    process.start(other, QStringList());
    ASSERT_TRUE(process.waitForReadyRead());
    EXPECT_EQ(process.readAll().trimmed(), "alone");
    process.kill();
    process.waitForFinished();
}
