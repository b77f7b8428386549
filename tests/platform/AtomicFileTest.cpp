#include "platform/AtomicFile.h"

#include "support/DiskRecord.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// While it lives, no file may grow beyond a limit: writing more fails as it does on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

class AtomicFileTest : public ::testing::Test {
protected:
    QString path(const QString &name = u"file"_s) const { return m_folder.filePath(name); }

    QStringList names() const {
        return QDir(m_folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    static mode_t modeOf(const QString &path) {
        struct stat status {};
        stat(QFile::encodeName(path).constData(), &status);
        return status.st_mode & 07777;
    }

    static std::string problemOf(const QString &path, const QByteArray &bytes) {
        try {
            writeAtomically(path, bytes);
            return {};
        } catch (const FileError &error) {
            return error.what();
        }
    }

    const QTemporaryDir m_folder;
};

} // namespace

TEST_F(AtomicFileTest, whatAKilledWriterLeftIsRemovedOnceItIsOld) {
    const QString old = path(u".ostrelin-0123.tmp"_s);
    const QString fresh = path(u".ostrelin-4567.tmp"_s);
    const QString other = path(u".other.tmp"_s);
    for (const QString &name : {old, fresh, other}) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        const int age = name == fresh ? 0 : 3700;
        ASSERT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addSecs(-age), QFileDevice::FileModificationTime));
    }
    removeAbandonedFiles(QFileInfo(old).path());
    EXPECT_FALSE(QFile::exists(old));
    EXPECT_TRUE(QFile::exists(fresh));
    EXPECT_TRUE(QFile::exists(other));
}

TEST_F(AtomicFileTest, aPipeInThePlaceOfAFileIsNotWaitedFor) {
    ASSERT_EQ(::mkfifo(path().toLocal8Bit().constData(), 0600), 0);
    EXPECT_FALSE(readFile(path()));
    EXPECT_FALSE(readFile(QFileInfo(path()).path()));
}

TEST_F(AtomicFileTest, whatWasWrittenIsReadAgain) {
    for (const QByteArray &bytes :
         {QByteArray("text"), QByteArray(), QByteArray("\0\xff", 2), QByteArray(5000000, 'x')}) {
        writeAtomically(path(), bytes);
        EXPECT_EQ(readFile(path()), bytes);
    }
}

TEST_F(AtomicFileTest, onlyTheBeginningOfAFileIsReadWhereThatIsAskedFor) {
    writeAtomically(path(), "text");
    EXPECT_EQ(readFile(path(), 0), QByteArray());
    EXPECT_EQ(readFile(path(), 3), QByteArray("tex"));
    EXPECT_EQ(readFile(path(), 4), QByteArray("text"));
    EXPECT_EQ(readFile(path(), 5000000), QByteArray("text"));
    ASSERT_TRUE(QFile::resize(path(), 50'000'000'000));
    EXPECT_EQ(readFile(path(), 1000), "text" + QByteArray(996, '\0'));
}

TEST_F(AtomicFileTest, noTemporaryFileRemains) {
    writeAtomically(path(), "one");
    writeAtomically(path(), "two");
    EXPECT_EQ(names(), QStringList{u"file"_s});
}

TEST_F(AtomicFileTest, theDiskHasTheBytesBeforeTheNameAndTheNameBeforeTheReturn) {
    writeAtomically(path(), "one");
    const DiskRecord record;
    writeAtomically(path(), "two");
    const QByteArray folder = m_folder.path().toLocal8Bit();
    const QByteArrayList orders = DiskRecord::orders();
    ASSERT_EQ(orders.size(), 3);
    EXPECT_TRUE(orders.at(0).startsWith("flush " + folder + "/.ostrelin-")) << orders.at(0).toStdString();
    EXPECT_EQ(orders.at(1), "rename " + orders.at(0).mid(6) + " to " + path().toLocal8Bit());
    EXPECT_EQ(orders.at(2), "flush " + folder);
}

TEST_F(AtomicFileTest, theDiskCanBeWaitedForLater) {
    const DiskRecord record;
    writeAtomically(path(), "one", Durability::renamed);
    EXPECT_EQ(readFile(path()), "one");
    ASSERT_EQ(DiskRecord::orders().size(), 1);
    EXPECT_TRUE(DiskRecord::orders().first().startsWith("rename "));
    flushToDisk(path());
    const QByteArray folder = m_folder.path().toLocal8Bit();
    EXPECT_EQ(DiskRecord::orders().mid(1),
              (QByteArrayList{"flush " + path().toLocal8Bit(), "flush " + folder}));
    EXPECT_THROW(flushToDisk(path() + u" elsewhere"_s), FileError);
}

TEST_F(AtomicFileTest, namesInAnyScriptAndOfAnyLengthServe) {
    const QString name = u"ä 世界 "_s + QString(200, u'x');
    writeAtomically(path(name), "text");
    EXPECT_EQ(names(), QStringList{name});
}

TEST_F(AtomicFileTest, aRelativePathServes) {
    const QString before = QDir::currentPath();
    QDir::setCurrent(m_folder.path());
    writeAtomically(u"file"_s, "text");
    QDir::setCurrent(before);
    EXPECT_EQ(readFile(path()), QByteArray("text"));
}

TEST_F(AtomicFileTest, aNewFileIsForItsOwnersEyesOnly) {
    writeAtomically(path(), "text");
    EXPECT_EQ(modeOf(path()), 0600u);
}

TEST_F(AtomicFileTest, aFileThatStandsKeepsItsMode) {
    writeAtomically(path(), "one");
    for (const mode_t mode : {0644u, 0640u, 0400u, 0755u}) {
        chmod(QFile::encodeName(path()).constData(), mode);
        writeAtomically(path(), "two");
        EXPECT_EQ(modeOf(path()), mode);
    }
}

TEST_F(AtomicFileTest, aReaderOfTheOldFileKeepsSeeingIt) {
    writeAtomically(path(), "old");
    QFile reader(path());
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    writeAtomically(path(), "something new");
    EXPECT_EQ(reader.readAll(), "old");
}

TEST_F(AtomicFileTest, aReaderOnAnotherThreadNeverSeesAPart) {
    const QByteArray one(100000, 'a');
    const QByteArray two(70000, 'b');
    writeAtomically(path(), one);
    std::thread writer([&] {
        for (int round = 0; round < 100; ++round)
            writeAtomically(path(), round % 2 == 0 ? two : one);
    });
    for (int look = 0; look < 300; ++look) {
        const std::optional<QByteArray> seen = readFile(path());
        EXPECT_TRUE(seen == one || seen == two);
    }
    writer.join();
}

TEST_F(AtomicFileTest, aFullDiskLeavesTheOldFileAndNothingElse) {
    writeAtomically(path(), "old");
    std::string problem;
    {
        const FileSizeLimit limit(1000);
        problem = problemOf(path(), QByteArray(100000, 'x'));
    }
    EXPECT_THAT(problem, testing::HasSubstr(m_folder.path().toStdString()));
    EXPECT_THAT(problem, testing::HasSubstr("File too large"));
    EXPECT_EQ(readFile(path()), QByteArray("old"));
    EXPECT_EQ(names(), QStringList{u"file"_s});
}

TEST_F(AtomicFileTest, aMissingFolderIsAFailureWithPathAndReason) {
    const QString deep = m_folder.filePath(u"missing/file"_s);
    EXPECT_THAT(problemOf(deep, "text"), testing::MatchesRegex(".*/missing/.*: No such file or directory"));
}

TEST_F(AtomicFileTest, aFolderInThePlaceOfTheFileIsAFailureThatLeavesNothing) {
    QDir(m_folder.path()).mkdir(u"file"_s);
    EXPECT_THAT(problemOf(path(), "text"), testing::HasSubstr("file: Is a directory"));
    EXPECT_EQ(names(), QStringList{u"file"_s});
}

TEST_F(AtomicFileTest, aLinkStaysAndTheFileThatItLeadsToIsReplaced) {
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"elsewhere"_s));
    const QString target = m_folder.filePath(u"elsewhere/target"_s);
    writeAtomically(target, "old");
    ASSERT_TRUE(QFile::link(target, path()));
    writeAtomically(path(), "new");
    EXPECT_EQ(QFile::symLinkTarget(path()), target);
    EXPECT_EQ(readFile(target), QByteArray("new"));
    EXPECT_EQ(QDir(m_folder.filePath(u"elsewhere"_s)).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(AtomicFileTest, aLinkThatLeadsNowhereIsReplaced) {
    ASSERT_TRUE(QFile::link(m_folder.filePath(u"nowhere"_s), path()));
    writeAtomically(path(), "new");
    EXPECT_EQ(QFile::symLinkTarget(path()), QString());
    EXPECT_EQ(readFile(path()), QByteArray("new"));
    EXPECT_EQ(names(), QStringList{u"file"_s});
}

TEST_F(AtomicFileTest, whatCannotBeReadIsNothing) {
    EXPECT_EQ(readFile(path()), std::nullopt);
    EXPECT_EQ(readFile(m_folder.path()), std::nullopt);
    EXPECT_EQ(readFile(QString()), std::nullopt);
}
