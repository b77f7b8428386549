#pragma once

#include "core/AppState.h"
#include "engine/EngineProcessBox.h"
#include "platform/AtomicFile.h"
#include "records/Coder.h"
#include "records/Folders.h"
#include "records/IncrementalHasher.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ManualClock.h"
#include "support/ScriptedEngine.h"
#include "support/TemporaryApplicationFolder.h"

#include <QDir>
#include <QFile>

#include <mutex>

/// The application on a machine of the test's own: an empty folder, a network of which every word is
/// scripted, a stand-in for the engine's executable.
class AppStateFixture : public ::testing::Test {
protected:
    AppStateFixture() {
        makeApp();
        machine.totalRAM = 64'000'000'000;
        machine.gpuBudget = 64'000'000'000;
        machine.freeDisk = 1'000'000'000'000;
    }

    ~AppStateFixture() override {
        app.reset();
        box.terminate();
    }

    /// A new run of the program on the same machine.
    void makeApp() {
        app.reset();
        app = std::make_unique<AppState>(
            box, clock,
            AppState::Machine{
                .measure = [this](std::stop_token) { return measured(machine); },
                .keepAwake =
                    [this](const QString &reason) {
                        reasons.append(reason);
                        const auto token = std::make_shared<int>(0);
                        stillAwake = token;
                        return token;
                    },
                .syncAgents =
                    [this](const QList<Schedule> &schedules) {
                        const std::lock_guard guard(syncLock);
                        synced.append(schedules);
                    },
                .postNotification =
                    [this](const QString &title, const QString &body, std::stop_token) {
                        notified.append(title + QStringLiteral(": ") + body);
                        return nothing();
                    },
                .isInTemporaryLocation = [this] { return isInTemporaryLocation; },
            });
        phases.clear();
        QObject::connect(app.get(), &AppState::phaseChanged, app.get(), [this] { phases.append(name()); });
    }

    /// A model whose file holds these bytes.
    ModelTier tier(const QString &id, const QByteArray &bytes) const {
        IncrementalHasher hasher;
        hasher.update(bytes);
        return {.id = id,
                .displayName = id.toUpper(),
                .filename = id + QStringLiteral(".gguf"),
                .url = QUrl(network.url().toString() + u'/' + id),
                .sha256 = hasher.hexDigest(),
                .sizeBytes = bytes.size(),
                .requiredGPUBytes = 1,
                .contextLength = 4096,
                .supportsTools = true,
                .license = QStringLiteral("MIT")};
    }

    /// The catalog is the next thing that the network is asked for.
    void serveCatalog(const QList<ModelTier> &tiers) {
        network.answer(Script(200).raw(encodeRecord(Catalog{1, tiers})));
    }

    /// Settings of a person who has seen the welcome screen, with a model or without one.
    static void seenWelcome(const std::optional<InstalledModel> &model = std::nullopt) {
        ensureFolders();
        Settings settings;
        settings.didFinishWelcome = true;
        settings.installed = model;
        saveSettings(settings);
    }

    /// The same with the model's file in its place.
    static void hasModel(const ModelTier &tier) {
        seenWelcome(InstalledModel{.tierId = tier.id,
                                   .displayName = tier.displayName,
                                   .filename = tier.filename,
                                   .contextLength = tier.contextLength,
                                   .supportsTools = tier.supportsTools,
                                   .license = tier.license,
                                   .sizeBytes = tier.sizeBytes});
        writeAtomically(modelsFolder() + u'/' + tier.filename, "model");
    }

    /// Runs until that phase is there, while the engine's time passes.
    template<typename Kind>
    bool reaches() {
        return eventually([this] {
            clock.advance(std::chrono::milliseconds(500));
            return isIn<Kind>(app->phase());
        });
    }

    /// Starts the engine anew, and runs until it is ready.
    bool restartsEngine() {
        const qsizetype before = phases.count(QStringLiteral("ready"));
        app->resolveModel();
        return settles([&] { return phases.count(QStringLiteral("ready")) > before; });
    }

    template<typename Condition>
    bool settles(Condition condition) {
        return eventually([&] {
            clock.advance(std::chrono::milliseconds(500));
            return condition();
        });
    }

    QString name() const {
        static const QStringList names{QStringLiteral("unsupported"), QStringLiteral("needsDownload"),
                                       QStringLiteral("error"),       QStringLiteral("checking"),
                                       QStringLiteral("welcome"),     QStringLiteral("needsInitialization"),
                                       QStringLiteral("downloading"), QStringLiteral("starting"),
                                       QStringLiteral("ready")};
        return names.at(qsizetype(app->phase().index()));
    }

    static QStringList filesIn(const QString &folder) {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QByteArray recordedModel() const { return readFile(record)->split('\n').at(1); }
    QByteArray recordedContext() const { return readFile(record)->split('\n').at(9); }

    TemporaryApplicationFolder folder;
    ScriptedEngine network;
    EnvironmentVariable catalogAddress{
        "OSTRELIN_CATALOGURL", (network.url().toString() + QStringLiteral("/catalog.json")).toLocal8Bit()};
    ScriptedEngine versions; ///< what tells of newer releases
    EnvironmentVariable versionAddress{
        "OSTRELIN_VERSIONURL", (versions.url().toString() + QStringLiteral("/version.json")).toLocal8Bit()};
    QString record = folder.dataHome() + QStringLiteral("/record");
    EnvironmentVariable recording{"FAKE_SERVER_RECORD", record.toLocal8Bit()};
    EnvironmentVariable server{"OSTRELIN_LLAMA_SERVER", FAKE_SERVER_PATH};
    EnvironmentVariable behaviour{"FAKE_SERVER", "ready"};
    ManualClock clock;
    EngineProcessBox box;
    MachineReport machine;
    bool isInTemporaryLocation = false;
    QStringList reasons;            ///< why the machine was to stay awake, each time it was
    std::weak_ptr<void> stillAwake; ///< expired while nothing keeps it awake
    QStringList phases;             ///< all that came, in their order
    std::mutex syncLock;
    QList<QList<Schedule>> synced; ///< the schedules of each sync of the jobs, under the lock
    QStringList notified;          ///< title and body of each notification
    std::unique_ptr<AppState> app;

private:
    static Task<> nothing() { co_return; }
    static Task<MachineReport> measured(MachineReport report) { co_return report; }
};
