#include "schedules/ScheduleStore.h"

#include "platform/AtomicFile.h"
#include "records/Folders.h"
#include "schedules/Samples.h"
#include "support/TemporaryApplicationFolder.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class ScheduleStoreTest : public ::testing::Test {
protected:
    ScheduleStoreTest() { ensureFolders(); }

    static Schedule titled(const QString &title) {
        Schedule schedule = sampleSchedule();
        schedule.id = QUuid::createUuid();
        schedule.title = title;
        return schedule;
    }

    static QStringList titles() {
        QStringList all;
        for (const Schedule &schedule : loadSchedules())
            all.append(schedule.title);
        return all;
    }

    TemporaryApplicationFolder folder;
    const Schedule one = titled(u"one"_s);
    const Schedule two = titled(u"two"_s);
    const Schedule three = titled(u"three"_s);
};

} // namespace

TEST_F(ScheduleStoreTest, withoutAFileThereAreNone) {
    EXPECT_TRUE(loadSchedules().isEmpty());
}

TEST_F(ScheduleStoreTest, theyComeBackInTheirOrder) {
    saveSchedules({two, one, three});
    EXPECT_EQ(loadSchedules(), (QList{two, one, three}));
    EXPECT_EQ(QDir(applicationFolder()).entryList(QDir::Files), QStringList{u"schedules.json"_s})
        << "written whole, with nothing left behind";
}

TEST_F(ScheduleStoreTest, aFileThatCannotBeReadIsAnEmptyListAndTheNextSaveReplacesIt) {
    for (const QByteArray &text : {QByteArray("["), QByteArray("{}"), QByteArray("null"), QByteArray(),
                                   QByteArray(R"([{"id": "6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11"}])")}) {
        writeAtomically(schedulesFile(), text);
        EXPECT_TRUE(loadSchedules().isEmpty()) << text.toStdString();
        upsertSchedule(one);
        EXPECT_EQ(loadSchedules(), QList{one});
    }
}

TEST_F(ScheduleStoreTest, oneThatCannotBeReadMakesTheWholeFileUnreadable) {
    saveSchedules({one, two});
    QByteArray text = readFile(schedulesFile()).value();
    writeAtomically(schedulesFile(), text.replace("\"two\"", "2"));
    EXPECT_TRUE(loadSchedules().isEmpty());
}

TEST_F(ScheduleStoreTest, aKnownOneKeepsItsPlace) {
    saveSchedules({one, two, three});
    Schedule changed = two;
    changed.title = u"changed"_s;
    upsertSchedule(changed);
    EXPECT_EQ(loadSchedules(), (QList{one, changed, three}));
}

TEST_F(ScheduleStoreTest, aNewOneComesLast) {
    for (const Schedule &schedule : {three, one, two})
        upsertSchedule(schedule);
    EXPECT_EQ(titles(), (QStringList{u"three"_s, u"one"_s, u"two"_s}));
}

TEST_F(ScheduleStoreTest, deletingTakesEveryOneWithTheId) {
    saveSchedules({one, two, one, three});
    deleteSchedule(one.id);
    EXPECT_EQ(loadSchedules(), (QList{two, three}));
    deleteSchedule(QUuid::createUuid());
    EXPECT_EQ(loadSchedules(), (QList{two, three}));
}

TEST_F(ScheduleStoreTest, aFailureToWriteIsSilent) {
    saveSchedules({one});
    Schedule timeless = two;
    timeless.lastRun = QDateTime();
    saveSchedules({timeless});
    EXPECT_EQ(loadSchedules(), QList{one}) << "what has no JSON form leaves the file as it was";
    QDir(applicationFolder()).removeRecursively();
    saveSchedules({one});
    EXPECT_TRUE(loadSchedules().isEmpty());
}
