#include "records/JsonFields.h"
#include "schedules/Samples.h"

#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray plainText = R"({
    "enabled": true,
    "hour": 9,
    "id": "6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11",
    "minute": 0,
    "prompt": "What is good today?",
    "recurrence": "daily",
    "runInBackground": false,
    "title": "Morning",
    "weekdays": [
    ]
}
)";

Schedule fullSchedule() {
    Schedule schedule = weeklySchedule({7, 1, 1});
    schedule.runInBackground = true;
    schedule.onceDate = QDateTime(QDate(2026, 11, 15), QTime(13, 18, 58), Qt::UTC);
    schedule.lastRun = QDateTime(QDate(2026, 11, 14), QTime(9, 0, 10), Qt::UTC);
    schedule.lastChatId = QUuid(u"0F6C2F6E-9F5D-4E3B-8A77-2B1D4C5E6F70"_s);
    return schedule;
}

} // namespace

TEST(Schedule, itsJsonFormLeavesOutWhatIsAbsent) {
    EXPECT_EQ(encodeRecord(sampleSchedule()), plainText);
    EXPECT_EQ(decodeRecord<Schedule>(plainText), sampleSchedule());
}

TEST(Schedule, everyFieldComesBack) {
    const Schedule schedule = fullSchedule();
    const QJsonObject json = encode(schedule).toObject();
    EXPECT_EQ(json.size(), 12);
    EXPECT_EQ(json[u"onceDate"_s], u"2026-11-15T13:18:58Z"_s);
    EXPECT_EQ(json[u"lastRun"_s], u"2026-11-14T09:00:10Z"_s);
    EXPECT_EQ(json[u"lastChatId"_s], u"0F6C2F6E-9F5D-4E3B-8A77-2B1D4C5E6F70"_s);
    EXPECT_EQ(json[u"weekdays"_s], (QJsonArray{7, 1, 1}));
    EXPECT_EQ(decodeRecord<Schedule>(encodeRecord(schedule)), schedule);
}

TEST(Schedule, eachRecurrenceHasItsName) {
    EXPECT_EQ(nameOf(ScheduleRecurrence::once), u"once"_s);
    EXPECT_EQ(nameOf(ScheduleRecurrence::daily), u"daily"_s);
    EXPECT_EQ(nameOf(ScheduleRecurrence::weekly), u"weekly"_s);
    QJsonObject json = encode(fullSchedule()).toObject();
    json[u"recurrence"_s] = u"monthly"_s;
    Schedule schedule;
    EXPECT_THROW(decode(json, schedule), DecodingError);
}

TEST(Schedule, aRequiredKeyThatIsMissingIsAnError) {
    const QJsonObject whole = encode(sampleSchedule()).toObject();
    for (const QString &key : whole.keys()) {
        QJsonObject json = whole;
        json.remove(key);
        Schedule schedule;
        EXPECT_THROW(decode(json, schedule), DecodingError) << key.toStdString();
    }
}

TEST(Schedule, aTitleMayBeEmptyAndHasAName) {
    Schedule schedule = sampleSchedule();
    EXPECT_EQ(schedule.name(), u"Morning"_s);
    schedule.title.clear();
    EXPECT_EQ(schedule.name(), u"Scheduled run"_s);
    EXPECT_EQ(decodeRecord<Schedule>(encodeRecord(schedule)), schedule);
}
