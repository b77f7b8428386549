#include "core/AppState.h"

#include "conversation/History.h"
#include "core/DemoModel.h"
#include "engine/EngineProcessBox.h"
#include "platform/AtomicFile.h"
#include "platform/Bundle.h"
#include "records/CatalogSource.h"
#include "records/Folders.h"
#include "records/Memory.h"

#include <QFile>

#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A tier for a model that is on disk but in no catalog.
ModelTier tierOf(const InstalledModel &model, const QString &path) {
    return {.id = model.tierId,
            .displayName = model.displayName,
            .filename = model.filename,
            .url = QUrl::fromLocalFile(path),
            .mirrorURL = {},
            .sha256 = {},
            .sizeBytes = model.sizeBytes,
            .requiredGPUBytes = 0,
            .minRAMBytes = 0,
            .contextLength = model.contextLength,
            .sampling = model.sampling,
            .thinkingSampling = model.thinkingSampling,
            .supportsTools = model.supportsTools,
            .license = model.license,
            .gpuBytesProvisional = {}};
}

/// The sentence of an error that a person may read.
QString descriptionOf(const std::exception &error) {
    return QString::fromUtf8(error.what());
}

} // namespace

AppState::AppState(EngineProcessBox &box, Clock &clock, QObject *parent)
    : ChatHost(parent),
      m_box(box),
      m_engine(box, clock),
      m_chat(this, clock) {}

AppState::~AppState() = default;

void AppState::bootstrap() {
    if (std::exchange(m_didBootstrap, true))
        return;
    setPhase(phase::Checking{});
    try {
        ensureFolders();
    } catch (const FileError &) {
        setPhase(phase::Error{u"Ostrelin couldn't create its folder."_s, false});
        return;
    }
    m_memory = readMemory();
    m_box.setPidFile(enginePidFile());
    m_box.killStaleServer();
    m_settings = loadSettings();
    Q_EMIT settingsChanged();
    resolveModel();
}

void AppState::resolveModel() {
    const Model model = findModel();
    m_startTask.start([&](std::stop_token stop) { return startEngine(model, stop); });
}

AppState::Model AppState::findModel() const {
    const QString named = qEnvironmentVariable("OSTRELIN_MODEL_PATH");
    if (!named.isEmpty() && QFile::exists(named)) {
        const Catalog catalog = loadBuiltInCatalog(resourcesFolder());
        return {named, catalog.tiers.isEmpty() ? std::nullopt : std::optional(catalog.tiers.last())};
    }
    if (m_settings.installed) {
        const QString path = modelsFolder() + u'/' + m_settings.installed->filename;
        if (QFile::exists(path))
            return {path, tierOf(*m_settings.installed, path)};
    }
    const DemoModel demo = demoModel(resourcesFolder());
    return {demo.path, demo.tier};
}

Task<> AppState::startEngine(Model model, std::stop_token stop) {
    setPhase(phase::Starting{});
    if (m_activeTier != model.tier) {
        m_activeTier = model.tier;
        Q_EMIT activeTierChanged();
    }
    const qint64 contextLength = model.tier ? model.tier->contextLength : defaultContextLength;
    QString failure;
    try {
        co_await m_engine.start(model.path, contextLength, stop);
    } catch (const Cancelled &) {
        throw;
    } catch (const std::exception &error) {
        failure = descriptionOf(error);
    }
    if (stop.stop_requested())
        co_return;
    if (!failure.isNull()) {
        setPhase(phase::Error{failure, false});
        co_return;
    }
    m_chat.reloadSummaries();
    if (!m_chat.conversation())
        m_chat.newChat();
    setPhase(phase::Ready{});
}

void AppState::shutDown() {
    // The server ends at once when nobody reads from it any more, and lingers otherwise: also when it is
    // asked to end before it has noticed that its reader is gone.
    constexpr auto noticeTime = 100ms;
    m_startTask.cancel();
    const bool wasGenerating = m_chat.isGenerating();
    m_chat.stop();
    if (wasGenerating)
        std::this_thread::sleep_for(noticeTime);
    m_box.terminate();
}

void AppState::setPhase(const AppPhase &phase) {
    if (m_phase == phase)
        return;
    m_phase = phase;
    Q_EMIT phaseChanged();
}
