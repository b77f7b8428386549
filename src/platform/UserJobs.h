#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

/// A time at which a job is started, day by day or week by week. By the machine's clock.
struct CalendarInterval {
    qint64 hour = 0;
    qint64 minute = 0;
    std::optional<qint64> weekday; ///< 1 is Monday, 7 and 0 are Sunday; every day without one

    bool operator==(const CalendarInterval &) const = default;
};

/// A program that the system starts for this person at set times, whether or not ours is running.
struct UserJob {
    QString label;       ///< which job it is, for the system
    QStringList command; ///< the executable's path, and its arguments
    QList<CalendarInterval> intervals;
};

/// The person's jobs with the system. Each call asks the system and waits for its answer; how that turns out
/// goes unnoticed. A system that hasn't answered within ten seconds isn't asked any more by this object. Any
/// thread, one at a time.
class UserJobs {
public:
    virtual ~UserJobs() = default;

    /// Takes the job of that label away, if there is one. What describes it stays on the disk.
    virtual void bootOut(const QString &label) = 0;

    /// Describes the job on the disk and hands it to the system, which starts it at its times and not now.
    virtual void bootstrap(const UserJob &job) = 0;

    /// Those of this system.
    static std::unique_ptr<UserJobs> ofSystem();
};
