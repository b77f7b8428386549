#pragma once

#include "platform/TaskHandle.h"
#include "schedules/Schedule.h"

#include <QObject>
#include <QSet>

#include <functional>
#include <future>
#include <list>

class ChatController;
class Clock;

/// Runs the schedules that come due while the program is open, each as a turn in a chat of its own, and keeps
/// the system's jobs for the time when it isn't in step with them. Main thread only.
class Scheduler : public QObject {
    Q_OBJECT

public:
#ifndef Q_MOC_RUN
    /// What it asks of the application and of the system.
    struct Points {
        /// Whether a turn can be run. While it can't, nothing runs.
        std::function<bool()> isReady;
        /// Brings the system's jobs in step with these schedules. Called on a thread of its own, one call
        /// after the other.
        std::function<void(QList<Schedule>)> syncAgents;
        /// Tells the person.
        std::function<Task<>(QString title, QString body, std::stop_token stop)> postNotification;
    };

    /// `chat` and `clock` must outlive this object.
    Scheduler(ChatController &chat, Clock &clock, Points points, QObject *parent = nullptr);
#endif

    /// Waits until the system's jobs are in step.
    ~Scheduler() override;

    /// The schedules on disk as they were read last.
    const QList<Schedule> &schedules() const {
        return m_schedules;
    }

    /// Reads the schedules, syncs the jobs, and looks for due ones every 30 seconds from now on. Another call
    /// begins anew.
    void start();

    /// Looks for due ones no more; runs that are under way record nothing. Reads the schedules a last time.
    void stop();

    /// Runs a schedule now, whether due and enabled or not, and returns at once. Nothing happens while no
    /// turn can be run. Otherwise, at the end of its turn or at once if another turn runs already, it counts
    /// as run, with the chat that is on screen then, and the person is told.
    void run(const Schedule &schedule);

    /// Reads the schedules anew.
    void reload();

    /// Puts a schedule into the file, or takes it out; then reads them anew and syncs the jobs.
    void upsert(const Schedule &schedule);
    void remove(const QUuid &id);

Q_SIGNALS:
    void schedulesChanged();

private:
#ifndef Q_MOC_RUN
    Task<> tickForEver(std::stop_token stop);
    Task<> runToItsEnd(Schedule schedule, std::stop_token stop);
#endif
    void tick();
    void record(Schedule schedule);
    void sync();

    ChatController &m_chat;
    Clock &m_clock;
#ifndef Q_MOC_RUN
    const Points m_points;
#endif
    QList<Schedule> m_schedules;
    QSet<QUuid> m_removed; ///< a run of one that has gone meanwhile doesn't bring it back
    std::list<TaskHandle> m_runs;
    TaskHandle m_timer;
    std::future<void> m_syncing; ///< the last sync, which holds the one before it
};
