#pragma once

#include <QDateTime>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QUuid>

#include <array>
#include <optional>

/// How often a schedule runs.
enum class ScheduleRecurrence { once, daily, weekly };

constexpr std::array<QStringView, 3> caseNames(ScheduleRecurrence) {
    return {u"once", u"daily", u"weekly"};
}

/// How late a run may begin, in seconds. What was missed by more is passed over.
inline constexpr qint64 longestDelay = 300;

/// A prompt that the program runs by itself at set times. A plain value, equal when all fields are.
struct Schedule {
    QUuid id;
    QString title; ///< may be empty: see name()
    QString prompt;
    ScheduleRecurrence recurrence = ScheduleRecurrence::daily;
    qint64 hour = 0;        ///< 0 to 23, by the machine's clock; without a meaning for `once`
    qint64 minute = 0;      ///< 0 to 59, likewise
    QList<qint64> weekdays; ///< for `weekly`: 1 is Sunday, 7 Saturday
    std::optional<QDateTime> onceDate;
    bool enabled = false;
    bool runInBackground = false; ///< also while the program isn't open
    std::optional<QDateTime> lastRun;
    std::optional<QUuid> lastChatId; ///< the chat with the last result

    bool operator==(const Schedule &) const = default;

    /// The title, or "Scheduled run" for want of one.
    QString name() const;

    /// The first moment later than `after` at which it should run; nothing if there is none. Reckons by the
    /// machine's clock and time zone as they are set at the time of the call. Main thread.
    ///
    /// A daily or weekly run begins at the moment when the clock first shows its time or has jumped past it:
    /// a time that the change to daylight saving time leaves out is the moment of the change, and one that
    /// comes twice counts the first time. A weekly one without weekdays runs on the weekday of `after`. A
    /// time that no clock shows, such as 24:00, never comes.
    std::optional<QDateTime> nextRun(const QDateTime &after) const;

    /// Whether a run should begin at `now`: its time has come, at most `longestDelay` ago, and it hasn't run
    /// since. Main thread.
    bool isDue(const QDateTime &now) const;
};

/// The strict JSON form, as in ConversationCoding.h; the optional fields are written only when present.
QJsonValue encode(const Schedule &value);
void decode(const QJsonValue &json, Schedule &value);
