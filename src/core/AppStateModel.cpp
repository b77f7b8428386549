/// The half of AppState that leads to a model: the choice, the download, the start of the engine.

#include "conversation/History.h"
#include "core/AppState.h"
#include "core/TierChoice.h"
#include "engine/DownloadError.h"
#include "platform/AtomicFile.h"
#include "platform/BackupExclusion.h"
#include "platform/FileManager.h"
#include "records/Folders.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

InstalledModel installedFrom(const ModelTier &tier) {
    return {.tierId = tier.id,
            .displayName = tier.displayName,
            .filename = tier.filename,
            .contextLength = tier.contextLength,
            .sampling = tier.sampling,
            .thinkingSampling = tier.thinkingSampling,
            .supportsTools = tier.supportsTools,
            .license = tier.license,
            .sizeBytes = tier.sizeBytes};
}

/// Makes room: every model but this one goes, and what is half downloaded stays.
void removeOtherModels(const QString &filename) {
    const QDir models(modelsFolder());
    const auto all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QFileInfo &entry : models.entryInfoList(all)) {
        if (entry.fileName() == filename || entry.fileName().endsWith(u".partial"_s))
            continue;
        if (entry.isDir() && !entry.isSymLink())
            QDir(entry.filePath()).removeRecursively();
        else
            QFile::remove(entry.filePath());
    }
}

/// What marks the folder is among the files that were removed.
void keepOutOfBackups() {
    try {
        excludeFromBackup(modelsFolder());
    } catch (const FileError &) {
        // The next start marks it again.
    }
}

/// The sentence of an error that a person may read.
QString descriptionOf(const std::exception &error) {
    return QString::fromUtf8(error.what());
}

} // namespace

void AppState::resolveModel() {
    cancelWork();
    // While the start is under way nothing is known of models and machine yet; it leads here at its end.
    if (m_start == Start::failed)
        beginStart();
    else if (m_start == Start::underWay)
        setPhase(phase::Checking{});
    else
        m_resolveTask.start([this](std::stop_token stop) { return resolve(stop); });
}

Task<> AppState::resolve(std::stop_token stop) {
    const QString named = qEnvironmentVariable("OSTRELIN_MODEL_PATH");
    if (!named.isEmpty() && QFile::exists(named)) {
        std::optional<ModelTier> tier = forcedTier(m_catalog);
        if (!tier && !m_catalog.tiers.isEmpty())
            tier = m_catalog.tiers.last();
        co_await startEngine(named, tier, stop);
        co_return;
    }
    if (const std::optional<QString> path = installedModelPath()) {
        const InstalledModel installed = *m_settings.installed;
        const ModelTier tier = tierWithId(installed.tierId, m_catalog).value_or(tierOf(installed, *path));
        co_await startEngine(*path, tier, stop);
        if (!stop.stop_requested())
            refreshUpgradeOffer();
        co_return;
    }
    const auto choice = chooseTier(m_report, m_catalog, forcedTier(m_catalog));
    if (!choice) {
        setPhase(phase::Unsupported{
            u"Ostrelin needs more free space, or an Apple Silicon Mac with 8 GB of memory or more."_s});
        co_return;
    }
    publish(m_diskNote, choice->note, &AppState::diskNoteChanged);
    beginDownload(choice->tier);
}

void AppState::beginDownload(const ModelTier &tier) {
    cancelWork();
    if (m_pendingTier != tier)
        publish(m_downloadProgress, std::optional<DownloadProgress>(), &AppState::downloadProgressChanged);
    m_pendingTier = tier;
    setActiveTier(tier);
    publish(m_downloadPaused, false, &AppState::downloadPausedChanged);
    setPhase(phase::Downloading{});
    m_keepAwake = m_machine.keepAwake(u"Downloading Ostrelin model"_s);
    m_downloadTask.start([this, tier](std::stop_token stop) { return provide(tier, stop); });
}

Task<> AppState::provide(ModelTier tier, std::stop_token stop) {
    std::optional<QString> failure;
    bool isPaused = false;
    QString path;
    try {
        path = co_await m_downloader.download(tier, modelsFolder(), stop);
    } catch (const Cancelled &) {
        throw;
    } catch (const DownloadError &error) {
        isPaused = error.kind() == DownloadError::Kind::paused;
        failure = error.description();
    } catch (const std::exception &error) {
        failure = descriptionOf(error);
    }
    if (stop.stop_requested())
        co_return;
    if (isPaused) {
        publish(m_downloadPaused, true, &AppState::downloadPausedChanged);
    } else if (failure) {
        setPhase(phase::Error{*failure, hasLighter(tier)});
    } else {
        removeOtherModels(tier.filename);
        keepOutOfBackups();
        changeSetting(&Settings::installed, installedFrom(tier));
        co_await startEngine(path, tier, stop);
        if (stop.stop_requested())
            co_return;
    }
    m_keepAwake.reset();
}

Task<> AppState::startEngine(QString modelPath, std::optional<ModelTier> tier, std::stop_token stop) {
    setPhase(phase::Starting{});
    setActiveTier(tier);
    std::optional<QString> failure;
    try {
        co_await m_engine.start(modelPath, tier ? tier->contextLength : defaultContextLength, stop);
    } catch (const Cancelled &) {
        throw;
    } catch (const std::exception &error) {
        failure = descriptionOf(error);
    }
    if (stop.stop_requested())
        co_return;
    if (failure) {
        // A server that didn't get ready must not hold the memory meanwhile.
        m_engine.stop();
        setPhase(phase::Error{*failure, hasLighter(tier)});
        co_return;
    }
    m_chat.reloadSummaries();
    m_updates.start();
    if (!m_chat.conversation())
        m_chat.newChat();
    m_chat.startMemoryWatch();
    setPhase(phase::Ready{});
    m_scheduler.start();
}

void AppState::switchModel(const ModelTier &tier) {
    stopEngine();
    // An offer to what ran until now, and why what was picked is a lighter one: both are over.
    m_chat.setUpgradeBanner(std::nullopt);
    publish(m_diskNote, std::optional<QString>(), &AppState::diskNoteChanged);
    beginDownload(tier);
}

void AppState::togglePause() {
    if (m_downloadPaused) {
        publish(m_downloadPaused, false, &AppState::downloadPausedChanged);
        resumeDownload();
        return;
    }
    m_downloader.pause();
    publish(m_downloadPaused, true, &AppState::downloadPausedChanged);
}

void AppState::resumeDownload() {
    std::optional<ModelTier> tier = m_pendingTier;
    if (const auto *needed = std::get_if<phase::NeedsDownload>(&m_phase); needed && !tier)
        tier = tierWithId(needed->tierId, m_catalog);
    if (tier)
        beginDownload(*tier);
}

void AppState::takeProgress(const DownloadProgress &progress) {
    // The last word of a download that is over, of this model or of another, may still come.
    if (isIn<phase::Downloading>(m_phase) && m_pendingTier && progress.total == m_pendingTier->sizeBytes)
        publish(m_downloadProgress, std::optional(progress), &AppState::downloadProgressChanged);
}

void AppState::deleteModel() {
    stopEngine();
    if (m_settings.installed)
        QFile::remove(modelsFolder() + u'/' + m_settings.installed->filename);
    changeSetting(&Settings::installed, std::nullopt);
    setActiveTier(std::nullopt);
    m_chat.setUpgradeBanner(std::nullopt);
    resolveModel();
}

void AppState::revealModel() const {
    if (const std::optional<QString> path = installedModelPath())
        revealFile(*path);
}

std::optional<QString> AppState::installedModelPath() const {
    if (!m_settings.installed)
        return std::nullopt;
    const QString path = modelsFolder() + u'/' + m_settings.installed->filename;
    return QFile::exists(path) ? std::optional(path) : std::nullopt;
}

void AppState::refreshUpgradeOffer() {
    if (const auto tier = upgradeCandidate(m_report, m_catalog, m_settings))
        m_chat.setUpgradeBanner(upgradeOffer(*tier));
}

void AppState::acceptUpgrade() {
    const auto tier = upgradeCandidate(m_report, m_catalog, m_settings);
    if (tier)
        switchModel(*tier);
}

void AppState::dismissUpgrade() {
    m_chat.setUpgradeBanner(std::nullopt);
    const auto tier = upgradeCandidate(m_report, m_catalog, m_settings);
    if (!tier)
        return;
    changeSetting(&Settings::dismissedUpgradeTierId, tier->id);
}

void AppState::tryLighter() {
    const std::optional<ModelTier> current = m_activeTier ? m_activeTier : m_pendingTier;
    const auto next = current ? lighterTier(*current, m_catalog) : std::nullopt;
    if (next)
        switchModel(*next);
}

bool AppState::hasLighter(const std::optional<ModelTier> &tier) const {
    return tier && lighterTier(*tier, m_catalog);
}
