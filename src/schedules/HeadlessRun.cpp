#include "schedules/HeadlessRun.h"

#include "client/LLMClient.h"
#include "conversation/Prompt.h"
#include "engine/EngineManager.h"
#include "platform/AtomicFile.h"
#include "platform/Bundle.h"
#include "platform/FolderLock.h"
#include "records/CatalogSource.h"
#include "records/ChatStore.h"
#include "records/Folders.h"
#include "records/Memory.h"
#include "schedules/ScheduleStore.h"

#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int maxReplyTokens = 2048;

/// How long runs that gave way may take to be gone, and how often that is looked at.
constexpr std::chrono::seconds longestLeave(3);
constexpr std::chrono::milliseconds betweenLooks(50);

/// What is to be run, and on which model.
struct Assignment {
    Schedule schedule;
    Settings settings;
    ModelTier tier;
    QString modelPath;
};

/// Whether no other instance of the program runs. Others that are about to leave are waited for.
Task<bool> isAlone(HeadlessSurroundings around, std::stop_token stop) {
    const auto deadline = around.clock.elapsed() + longestLeave;
    while (around.anotherInstanceRuns()) {
        if (stop.stop_requested() || around.clock.elapsed() > deadline)
            co_return false;
        co_await around.clock.sleep(betweenLooks, stop);
    }
    co_return true;
}

bool makeFolders() {
    try {
        ensureFolders();
        return true;
    } catch (const FileError &) {
        return false;
    }
}

std::optional<Schedule> scheduleWithId(const QUuid &id) {
    const QList<Schedule> schedules = loadSchedules();
    const auto found = std::find_if(schedules.begin(), schedules.end(),
                                    [&](const Schedule &schedule) { return schedule.id == id; });
    return found == schedules.end() ? std::nullopt : std::optional(*found);
}

/// Nothing if there is no model on disk, or no such schedule.
std::optional<Assignment> findAssignment(const QUuid &id) {
    const Settings settings = loadSettings();
    if (!settings.installed)
        return std::nullopt;
    const QString path = modelsFolder() + u'/' + settings.installed->filename;
    const std::optional<Schedule> schedule = scheduleWithId(id);
    if (!QFile::exists(path) || !schedule)
        return std::nullopt;
    const ModelTier tier = tierWithId(settings.installed->tierId, loadBuiltInCatalog(resourcesFolder()))
                               .value_or(tierOf(*settings.installed, path));
    return Assignment{*schedule, settings, tier, path};
}

Message messageOf(Role role, const QString &content) {
    return {.id = QUuid::createUuid(), .role = role, .content = content};
}

QJsonArray messagesFor(const Assignment &assignment, const QDate &today) {
    const QString prompt = systemPrompt({.memoryEnabled = assignment.settings.memoryEnabled,
                                         .memory = readMemory(),
                                         .today = today,
                                         .locale = QLocale::system()});
    return wireMessages({messageOf(Role::user, assignment.schedule.prompt)}, prompt);
}

/// Starts the engine, where the surroundings let it, and asks it.
Task<QString> ask(EngineManager &engine, Assignment assignment, HeadlessSurroundings around,
                  std::stop_token stop) {
    // The program that is opened meanwhile ends this server and starts its own. There is no room for two, so
    // this one isn't tried again.
    std::stop_source start;
    const std::stop_callback passOn(stop, [&start] { start.request_stop(); });
    const QObject connection;
    QObject::connect(&engine, &EngineManager::statusChanged, &connection, [&] {
        if (engine.status().state == EngineStatus::State::stopped && around.anotherInstanceRuns())
            start.request_stop();
    });
    co_await engine.start(assignment.modelPath, assignment.tier.contextLength, start.get_token());

    const LLMClient client{engine.baseURL().value_or(QUrl()), engine.apiKey()};
    const QDate today = around.clock.now().toLocalTime().date();
    const QString reply = co_await client.complete(messagesFor(assignment, today), assignment.tier.sampling,
                                                   maxReplyTokens, stop);
    co_return reply;
}

/// Saves the answer as a chat, and that the schedule has run.
void keep(Schedule schedule, const QString &reply, const QDateTime &now) {
    Conversation chat = newConversation(now, schedule.name());
    chat.messages = {messageOf(Role::user, schedule.prompt), messageOf(Role::assistant, reply)};
    ChatStore().save(chat);
    schedule.lastRun = now;
    schedule.lastChatId = chat.id;
    upsertSchedule(schedule);
}

Task<> tellFailure(const HeadlessSurroundings &around, std::stop_token stop) {
    return around.postNotification(u"Scheduled run"_s, u"A scheduled run could not finish."_s, stop);
}

} // namespace

Task<> runHeadlessSchedule(QUuid id, HeadlessSurroundings around, std::stop_token stop) {
    // Runs that begin at once see each other. The one that has the folder goes on, when the others have left.
    const FolderLock turn(applicationFolder());
    if (!turn.isHeld())
        co_return;
    const bool alone = co_await isAlone(around, stop);
    if (!alone)
        co_return;
    if (!makeFolders()) {
        co_await tellFailure(around, stop);
        co_return;
    }
    const std::optional<Assignment> assignment = findAssignment(id);
    if (!assignment)
        co_return;
    around.box.setPidFile(enginePidFile());
    around.box.killStaleServer();

    EngineManager engine(around.box, around.clock);
    std::optional<QString> reply;
    try {
        reply = co_await ask(engine, *assignment, around, stop);
    } catch (const std::exception &) {
        // Whatever it was, it is told below.
    }
    if (stop.stop_requested())
        throw Cancelled();
    const Schedule &schedule = assignment->schedule;
    if (reply)
        keep(schedule, *reply, around.clock.now());
    const Task<> told =
        reply ? around.postNotification(schedule.name(), u"Your scheduled run is ready."_s, stop)
              : tellFailure(around, stop);
    // While the desktop answers.
    engine.stop();
    co_await told;
}
