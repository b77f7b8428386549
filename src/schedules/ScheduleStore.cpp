#include "schedules/ScheduleStore.h"

#include "platform/AtomicFile.h"
#include "records/Folders.h"
#include "records/JsonFields.h"

#include <algorithm>

QList<Schedule> loadSchedules() {
    try {
        return decodeRecord<QList<Schedule>>(readFile(schedulesFile()).value_or(QByteArray()));
    } catch (const DecodingError &) {
        return {};
    }
}

void saveSchedules(const QList<Schedule> &schedules) {
    try {
        writeAtomically(schedulesFile(), encodeRecord(schedules));
    } catch (const EncodingError &) {
    } catch (const FileError &) {
    }
}

void upsertSchedule(const Schedule &schedule) {
    QList<Schedule> schedules = loadSchedules();
    const auto place = std::find_if(schedules.begin(), schedules.end(),
                                    [&](const Schedule &each) { return each.id == schedule.id; });
    if (place == schedules.end())
        schedules.append(schedule);
    else
        *place = schedule;
    saveSchedules(schedules);
}

void deleteSchedule(const QUuid &id) {
    QList<Schedule> schedules = loadSchedules();
    schedules.removeIf([&](const Schedule &each) { return each.id == id; });
    saveSchedules(schedules);
}
