#pragma once

#include "conversation/ChatController.h"
#include "conversation/ChatHost.h"
#include "core/AppPhase.h"
#include "core/BundleLocation.h"
#include "core/MachineReport.h"
#include "core/UpdateChecker.h"
#include "engine/DownloadProgress.h"
#include "engine/EngineManager.h"
#include "engine/ModelDownloader.h"
#include "platform/Notification.h"
#include "schedules/Scheduler.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <type_traits>

class Clock;
class EngineProcessBox;

/// The root of the interactive program: it owns the engine, the download, the chat, the scheduler and the
/// question for updates, holds the phase that the main window shows, and leads from a cold start to a ready
/// chat. Main thread only.
class AppState : public ChatHost {
    Q_OBJECT

public:
#ifndef Q_MOC_RUN
    /// What is asked of the machine; a test has a machine of its own.
    struct Machine {
        std::function<Task<MachineReport>(std::stop_token)> measure = measureMachine;
        /// Keeps the machine awake for as long as the token lives.
        std::function<std::shared_ptr<void>(const QString &reason)> keepAwake;
        /// What the scheduler asks of it.
        std::function<void(QList<Schedule>)> syncAgents;
        std::function<Task<>(QString title, QString body, std::stop_token stop)> postNotification;
        std::function<void()> askToNotify = ::askToNotify;
        std::function<bool()> isInTemporaryLocation = [] { return ::isInTemporaryLocation(); };
    };

    /// The same on a machine of the caller's.
    AppState(EngineProcessBox &box, Clock &clock, Machine machine, QObject *parent = nullptr);
#endif

    /// `box` and `clock` must outlive this object.
    AppState(EngineProcessBox &box, Clock &clock, QObject *parent = nullptr);
    ~AppState() override;

    const AppPhase &phase() const {
        return m_phase;
    }
    const Settings &settings() const override {
        return m_settings;
    }

    /// The models on offer, and what was measured of this machine; both known once the start is through.
    const Catalog &catalog() const {
        return m_catalog;
    }
    const MachineReport &report() const {
        return m_report;
    }

    /// How far the download is; nothing before the first word of it.
    const std::optional<DownloadProgress> &downloadProgress() const {
        return m_downloadProgress;
    }
    bool isDownloadPaused() const {
        return m_downloadPaused;
    }

    /// The model that is being downloaded or run, and the one whose download was begun last.
    std::optional<ModelTier> activeTier() const override {
        return m_activeTier;
    }
    const std::optional<ModelTier> &pendingTier() const {
        return m_pendingTier;
    }

    /// True while the reason for the model's size is shown.
    bool showsWhySize() const {
        return m_showWhySize;
    }

    /// True if the program runs from a place where it won't stay.
    bool needsMoveToApplications() const {
        return m_needsMoveToApplications;
    }

    /// Why a lighter model was chosen than the machine could carry; nothing if none was.
    const std::optional<QString> &diskNote() const {
        return m_diskNote;
    }

    QString memory() const override {
        return m_memory;
    }
    std::optional<QUrl> engineURL() const override {
        return m_engine.baseURL();
    }
    QString engineKey() const override {
        return m_engine.apiKey();
    }

    EngineManager &engine() {
        return m_engine;
    }
    ChatController &chat() {
        return m_chat;
    }
    Scheduler &scheduler() {
        return m_scheduler;
    }
    UpdateChecker &updates() {
        return m_updates;
    }

    /// The newer release that there is; nothing if there is none, or the person has dismissed it.
    std::optional<UpdateInfo> availableUpdate() const;

    /// Prepares folders, memory and settings, ends a server that an earlier run left behind, fetches the
    /// catalog, measures the machine, and goes on to the welcome screen or to the model. Returns at once;
    /// the phase tells how far it is. A second call does nothing, nor does any in a scheduled run.
    void bootstrap();

    /// Leads to a model, and returns at once: the file that OSTRELIN_MODEL_PATH names if it exists, else
    /// the installed model, else the best one that fits, which is downloaded. Where the start failed for want
    /// of a folder, it begins anew.
    void resolveModel();

    /// The person has seen the welcome screen or the start screen: remembers it, and goes on to the model.
    void finishWelcome();

    /// Downloads the model, whether it fits or not, and starts the engine with it. An earlier download and
    /// an earlier start of the engine are over.
    void beginDownload(const ModelTier &tier);

    /// Ends the engine and downloads another model, whether it fits or not.
    void switchModel(const ModelTier &tier);

    /// Pauses the download, or goes on with it.
    void togglePause();

    void setShowsWhySize(bool shows);

    /// Takes over changed settings and writes them.
    void saveSettings(const Settings &settings) override;

    /// Takes over a change of one setting and writes them all.
    template<typename T>
    void changeSetting(T Settings::*setting, const std::type_identity_t<T> &value);

    /// Takes over another text of the memory file and writes it.
    void saveMemory(const QString &text);

    /// The same for a text that is being typed: the file has it, and nobody waits for the disk, which has it
    /// a second later.
    void typeMemory(const QString &text);

    /// Waits until the disk has what was typed.
    void flushMemory();

    /// Takes over what another program has written into the memory file; not while our own text isn't in it.
    void refreshMemory();

    void rememberFact(const QString &fact) override;

    /// Asks the person for leave to show notifications, where the system wants that.
    void askToNotify() const;

    /// Shows the memory file in the file manager.
    void revealMemory() const;

    /// Ends everything that runs, removes the whole application folder, and shows the start screen.
    void deleteEverything();

    /// Deletes the installed model's file, and looks for a model anew.
    void deleteModel();

    /// Shows the installed model's file in the file manager; nothing happens where there is none.
    void revealModel() const;

    /// The path of the installed model's file; nothing if no model is installed or its file is gone.
    std::optional<QString> installedModelPath() const;

    /// Offers the better model that this machine can run, if there is one, through the chat's banner.
    void refreshUpgradeOffer();

    /// Takes up that offer: the engine ends, and the download begins.
    void acceptUpgrade();

    /// Turns it down; it isn't made again for that model.
    void dismissUpgrade();

    /// Doesn't tell of the present update again.
    void dismissUpdate();

    /// Downloads the model after the present one in the catalog; nothing happens where there is none.
    void tryLighter();

    /// Ends the running turn, the download and the engine, and waits for the engine's end. For the end of
    /// the program.
    void shutDown();

Q_SIGNALS:
    void phaseChanged();
    void settingsChanged();
    void catalogChanged();
    void reportChanged();
    void downloadProgressChanged();
    void downloadPausedChanged();
    void activeTierChanged();
    void showWhySizeChanged();
    void needsMoveToApplicationsChanged();
    void diskNoteChanged();
    void memoryChanged();

private:
    using Change = void (AppState::*)();

    /// Sets a published field and tells of it, if it changes.
    template<typename T>
    void publish(T &field, const T &value, Change changed);
    void setPhase(const AppPhase &phase) {
        publish(m_phase, phase, &AppState::phaseChanged);
    }
    void setActiveTier(const std::optional<ModelTier> &tier);
    void takeProgress(const DownloadProgress &progress);
    void resumeDownload();
    void stopEngine();
    void cancelWork();
    bool isOffline() const;
    bool hasLighter(const std::optional<ModelTier> &tier) const;
#ifndef Q_MOC_RUN
    void beginStart();
    Task<> start(std::stop_token stop);
    Task<> flushMemorySoon(std::stop_token stop);
    /// What the files hold, as far as nothing newer waits to be written.
    void takeOver(const Settings &settings, const QString &memory);
    Task<> resolve(std::stop_token stop);
    Task<> provide(ModelTier tier, std::stop_token stop);
    Task<> startEngine(QString modelPath, std::optional<ModelTier> tier, std::stop_token stop);
#endif

    AppPhase m_phase = phase::Checking{};
    Settings m_settings;
    Catalog m_catalog;
    MachineReport m_report;
    std::optional<DownloadProgress> m_downloadProgress;
    bool m_downloadPaused = false;
    std::optional<ModelTier> m_activeTier;
    bool m_showWhySize = false;
    bool m_needsMoveToApplications = false;
    std::optional<QString> m_diskNote;
    QString m_memory;
    bool m_isMemoryUnsaved = false;   ///< the file couldn't be written
    bool m_isMemoryUnflushed = false; ///< the disk needn't have the file as it is

#ifndef Q_MOC_RUN
    const Machine m_machine;
#endif
    Clock &m_clock;
    EngineProcessBox &m_box;
    EngineManager m_engine;
    ModelDownloader m_downloader;
    ChatController m_chat;
    Scheduler m_scheduler;
    UpdateChecker m_updates;

    enum class Start { notBegun, underWay, failed, decided } m_start = Start::notBegun;
    std::optional<ModelTier> m_pendingTier;
    std::shared_ptr<void> m_keepAwake;
    TaskHandle m_bootstrapTask;
    TaskHandle m_resolveTask;
    TaskHandle m_downloadTask;
    TaskHandle m_memoryFlush;
};

template<typename T>
void AppState::changeSetting(T Settings::*setting, const std::type_identity_t<T> &value) {
    Settings settings = m_settings;
    settings.*setting = value;
    saveSettings(settings);
}

template<typename T>
void AppState::publish(T &field, const T &value, Change changed) {
    if (field == value)
        return;
    field = value;
    Q_EMIT(this->*changed)();
}
