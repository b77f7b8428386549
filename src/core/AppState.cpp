#include "core/AppState.h"

#include "conversation/TurnServices.h"
#include "core/ProcessRole.h"
#include "engine/EngineProcessBox.h"
#include "platform/AtomicFile.h"
#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/KeepAwake.h"
#include "platform/OffMainThread.h"
#include "records/CatalogSource.h"
#include "records/Folders.h"
#include "records/Memory.h"
#include "schedules/Agents.h"

#include <QDir>

#include <thread>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

AppState::AppState(EngineProcessBox &box, Clock &clock, QObject *parent)
    : AppState(box, clock,
               {.keepAwake = [](const QString &reason) { return std::make_shared<KeepAwake>(reason); },
                .syncAgents = [](const QList<Schedule> &schedules) { ::syncAgents(schedules); },
                .postNotification = ::postNotification},
               parent) {}

AppState::AppState(EngineProcessBox &box, Clock &clock, Machine machine, QObject *parent)
    : ChatHost(parent),
      m_machine(std::move(machine)),
      m_clock(clock),
      m_box(box),
      m_engine(box, clock),
      m_chat(this, clock, turnServices(clock)),
      m_scheduler(m_chat, clock,
                  {.isReady = [this] { return isIn<phase::Ready>(m_phase); },
                   .syncAgents = m_machine.syncAgents,
                   .postNotification = m_machine.postNotification}),
      m_updates(clock, [this] { return isOffline(); }) {
    m_downloader.onProgress = [this](const DownloadProgress &progress) { takeProgress(progress); };
}

AppState::~AppState() {
    cancelWork();
}

void AppState::bootstrap() {
    if (m_start == Start::notBegun && !isHeadless())
        beginStart();
}

void AppState::beginStart() {
    m_start = Start::underWay;
    m_bootstrapTask.start([this](std::stop_token stop) { return start(stop); });
}

Task<> AppState::start(std::stop_token stop) {
    setPhase(phase::Checking{});
    // First of all, so that no change of theirs writes over what a start that fails here would have left
    // unread.
    const Settings keptSettings = loadSettings();
    takeOver(keptSettings, readMemory());
    try {
        ensureFolders();
        if (m_settings != keptSettings)
            ::saveSettings(m_settings);
        if (m_isMemoryUnsaved)
            saveMemory(m_memory);
    } catch (const FileError &) {
        m_start = Start::failed;
        setPhase(phase::Error{u"Ostrelin couldn't create its folder."_s, false});
        co_return;
    }
    ensurePagesFolder();
    m_box.setPidFile(enginePidFile());
    m_box.killStaleServer();

    // The machine is measured while the catalog is on its way.
    Task<MachineReport> measuring = m_machine.measure(stop);
    const std::optional<Catalog> remote = co_await fetchRemoteCatalog(catalogURL(), stop);
    if (stop.stop_requested())
        co_return;
    publish(m_catalog, remote ? *remote : loadBuiltInCatalog(resourcesFolder()), &AppState::catalogChanged);
    const MachineReport report = co_await std::move(measuring);
    if (stop.stop_requested())
        co_return;
    publish(m_report, report, &AppState::reportChanged);
    publish(m_needsMoveToApplications, m_machine.isInTemporaryLocation(),
            &AppState::needsMoveToApplicationsChanged);

    m_start = Start::decided;
    if (!m_report.isAppleSilicon || m_report.isRosetta)
        setPhase(phase::Unsupported{u"Ostrelin runs on Apple Silicon Macs with 8 GB of memory or more."_s});
    else if (m_catalog.tiers.isEmpty())
        setPhase(phase::Error{u"Ostrelin couldn't read its model list."_s, false});
    else if (m_settings.didFinishWelcome)
        resolveModel();
    else if (!isIn<phase::NeedsInitialization>(m_phase)) // as after everything was deleted meanwhile
        setPhase(phase::Welcome{});
}

void AppState::takeOver(const Settings &settings, const QString &memory) {
    // A start that begins anew finds what was changed while there was no folder. Settings that were kept tell
    // more than that; of the memory neither is lost.
    if (settings != Settings())
        publish(m_settings, settings, &AppState::settingsChanged);
    if (!m_isMemoryUnsaved)
        publish(m_memory, memory, &AppState::memoryChanged);
    else if (!m_memory.contains(memory))
        publish(m_memory, memory + u'\n' + m_memory, &AppState::memoryChanged);
}

void AppState::finishWelcome() {
    changeSetting(&Settings::didFinishWelcome, true);
    resolveModel();
}

void AppState::saveSettings(const Settings &settings) {
    publish(m_settings, settings, &AppState::settingsChanged);
    ::saveSettings(m_settings);
    if (isOffline())
        m_updates.clearAvailable();
}

bool AppState::isOffline() const {
    return m_settings.searchMode == SearchMode::off;
}

std::optional<UpdateInfo> AppState::availableUpdate() const {
    const std::optional<UpdateInfo> info = m_updates.availableInfo();
    return info && info->version != m_settings.dismissedUpdateVersion ? info : std::nullopt;
}

void AppState::dismissUpdate() {
    if (const std::optional<UpdateInfo> info = m_updates.availableInfo())
        changeSetting(&Settings::dismissedUpdateVersion, info->version);
}

void AppState::saveMemory(const QString &text) {
    publish(m_memory, text, &AppState::memoryChanged);
    m_isMemoryUnsaved = !writeMemory(text);
    m_isMemoryUnflushed = false;
}

void AppState::typeMemory(const QString &text) {
    publish(m_memory, text, &AppState::memoryChanged);
    m_isMemoryUnsaved = !writeMemory(text, Durability::renamed);
    m_isMemoryUnflushed = true;
    if (!m_memoryFlush.isRunning())
        m_memoryFlush.start([this](std::stop_token stop) { return flushMemorySoon(stop); });
}

Task<> AppState::flushMemorySoon(std::stop_token stop) {
    co_await m_clock.sleep(1s, stop);
    if (stop.stop_requested() || !m_isMemoryUnflushed)
        co_return;
    const std::function<bool()> flush = [] {
        ::flushMemory();
        return true;
    };
    co_await offMainThread(flush, stop);
}

void AppState::flushMemory() {
    if (std::exchange(m_isMemoryUnflushed, false))
        ::flushMemory();
}

void AppState::refreshMemory() {
    // What couldn't be written is nowhere else.
    if (!m_isMemoryUnsaved)
        publish(m_memory, readMemory(), &AppState::memoryChanged);
}

void AppState::rememberFact(const QString &fact) {
    refreshMemory();
    saveMemory(appendingMemoryFact(m_memory, fact));
}

void AppState::askToNotify() const {
    m_machine.askToNotify();
}

void AppState::revealMemory() const {
    revealFile(memoryFile());
}

void AppState::setShowsWhySize(bool shows) {
    publish(m_showWhySize, shows, &AppState::showWhySizeChanged);
}

void AppState::deleteEverything() {
    stopEngine();
    m_scheduler.stop();
    m_updates.stop();
    cancelWork();
    m_downloader.stop();
    QDir(applicationFolder()).removeRecursively();
    try {
        ensureFolders();
    } catch (const FileError &) {
        // The next start tries again, and tells.
    }
    ensurePagesFolder();
    // Not written: until the next change there is no settings file.
    publish(m_settings, Settings(), &AppState::settingsChanged);
    setActiveTier(std::nullopt);
    m_pendingTier.reset();
    publish(m_downloadProgress, std::optional<DownloadProgress>(), &AppState::downloadProgressChanged);
    publish(m_downloadPaused, false, &AppState::downloadPausedChanged);
    publish(m_diskNote, std::optional<QString>(), &AppState::diskNoteChanged);
    setShowsWhySize(false);
    publish(m_memory, QString(), &AppState::memoryChanged);
    m_isMemoryUnsaved = false;
    m_isMemoryUnflushed = false;
    m_chat.resetAll();
    setPhase(phase::NeedsInitialization{});
}

void AppState::shutDown() {
    m_bootstrapTask.cancel();
    m_updates.stop();
    cancelWork();
    stopEngine();
    // There may be room for it by now.
    if (m_isMemoryUnsaved)
        saveMemory(m_memory);
    flushMemory();
}

void AppState::stopEngine() {
    // The server ends at once when nobody reads from it any more, and lingers otherwise: also when it is
    // asked to end before it has noticed that its reader is gone.
    constexpr auto noticeTime = 100ms;
    const bool wasGenerating = m_chat.isGenerating();
    m_chat.stop();
    if (wasGenerating)
        std::this_thread::sleep_for(noticeTime);
    m_engine.stop();
}

void AppState::cancelWork() {
    m_resolveTask.cancel();
    m_downloadTask.cancel();
    m_keepAwake.reset();
}

void AppState::setActiveTier(const std::optional<ModelTier> &tier) {
    publish(m_activeTier, tier, &AppState::activeTierChanged);
}
