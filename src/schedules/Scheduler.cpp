#include "schedules/Scheduler.h"

#include "conversation/ChatController.h"
#include "platform/Clock.h"
#include "platform/WaitPoint.h"
#include "schedules/ScheduleStore.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds betweenTicks(30);

/// Waits until no turn runs, or until `stop` is requested. Which of the two it was, the token tells.
Task<> endOfTurn(ChatController &chat, std::stop_token stop) {
    WaitPoint end;
    const QObject connection;
    QObject::connect(&chat, &ChatController::isGeneratingChanged, &connection, [&] { end.wake(); });
    const std::stop_callback wakeOnStop(stop, [&end] { end.wake(); });
    if (chat.isGenerating())
        co_await end.wait();
}

} // namespace

Scheduler::Scheduler(ChatController &chat, Clock &clock, Points points, QObject *parent)
    : QObject(parent),
      m_chat(chat),
      m_clock(clock),
      m_points(std::move(points)) {}

Scheduler::~Scheduler() = default;

void Scheduler::start() {
    reload();
    sync();
    m_timer.start([this](std::stop_token stop) { return tickForEver(stop); });
}

void Scheduler::stop() {
    m_timer.cancel();
    m_runs.clear();
    reload();
}

void Scheduler::run(const Schedule &schedule) {
    m_runs.remove_if([](const TaskHandle &each) { return !each.isRunning(); });
    TaskHandle task;
    task.start([&](std::stop_token stop) { return runToItsEnd(schedule, stop); });
    m_runs.push_back(std::move(task));
}

void Scheduler::reload() {
    const QList<Schedule> schedules = loadSchedules();
    if (std::exchange(m_schedules, schedules) != schedules)
        Q_EMIT schedulesChanged();
}

void Scheduler::upsert(const Schedule &schedule) {
    upsertSchedule(schedule);
    reload();
    sync();
}

void Scheduler::remove(const QUuid &id) {
    m_removed.insert(id);
    deleteSchedule(id);
    reload();
    sync();
}

Task<> Scheduler::tickForEver(std::stop_token stop) {
    while (true) {
        co_await m_clock.sleep(betweenTicks, stop);
        if (stop.stop_requested())
            co_return;
        tick();
    }
}

void Scheduler::tick() {
    if (!m_points.isReady())
        return;
    const QDateTime now = m_clock.now();
    // A run that ends within the call changes the list.
    const QList<Schedule> schedules = m_schedules;
    for (const Schedule &schedule : schedules) {
        if (schedule.isDue(now))
            run(schedule);
    }
}

Task<> Scheduler::runToItsEnd(Schedule schedule, std::stop_token stop) {
    if (!m_points.isReady())
        co_return;
    if (!m_chat.isGenerating()) {
        m_chat.runSchedule(schedule.title, schedule.prompt);
        co_await endOfTurn(m_chat, stop);
        if (stop.stop_requested())
            co_return;
    }
    record(schedule);
    co_await m_points.postNotification(schedule.name(), u"Your scheduled run is ready."_s, stop);
}

void Scheduler::record(Schedule schedule) {
    if (m_removed.contains(schedule.id))
        return;
    // The person may have changed it during its run.
    const auto present = std::find_if(m_schedules.begin(), m_schedules.end(),
                                      [&](const Schedule &each) { return each.id == schedule.id; });
    if (present != m_schedules.end())
        schedule = *present;
    schedule.lastRun = m_clock.now();
    const std::optional<Conversation> &chat = m_chat.conversation();
    schedule.lastChatId = chat ? std::optional(chat->id) : std::nullopt;
    upsert(schedule);
}

void Scheduler::sync() {
    if (m_schedules.isEmpty())
        return;
    // The system may take its time: the window doesn't wait for it, only the end of the program does.
    m_syncing = std::async(std::launch::async, [before = std::move(m_syncing), schedules = m_schedules,
                                                syncAgents = m_points.syncAgents] {
        if (before.valid())
            before.wait();
        syncAgents(schedules);
    });
}
