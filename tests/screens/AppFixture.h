#pragma once

#include "core/AppState.h"
#include "engine/EngineProcessBox.h"
#include "platform/Mailbox.h"
#include "records/Coder.h"
#include "records/Folders.h"
#include "screens/Screen.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ManualClock.h"
#include "support/ScriptedEngine.h"
#include "support/TemporaryApplicationFolder.h"

#include <QFile>

/// The application of a person who has seen the welcome screen and has one model, with an engine that
/// says what it is told. The catalog has one model more on either side of that one; downloads begin, and
/// bring nothing.
class AppFixture : public testing::Test {
protected:
    AppFixture() {
        network.answerEach([catalog = encodeRecord(catalog)](const ScriptedEngine::Request &request) {
            return request.line.contains("/catalog.json") ? Script(200).raw(catalog) : Script(200).hold();
        });
        ensureFolders();
        QFile model(modelsFolder() + u'/' + house.filename);
        EXPECT_TRUE(model.open(QIODevice::WriteOnly));
        Settings settings;
        settings.didFinishWelcome = true;
        settings.installed = InstalledModel{.tierId = house.id,
                                            .displayName = house.displayName,
                                            .filename = house.filename,
                                            .contextLength = house.contextLength,
                                            .license = house.license,
                                            .sizeBytes = house.sizeBytes};
        saveSettings(settings);
    }

    /// A new start finds that the person's settings are those that `change` makes of them.
    template<typename Change>
    static void changeSettings(Change change) {
        Settings settings = loadSettings();
        change(settings);
        saveSettings(settings);
    }

    /// Runs the start until it comes to that phase.
    template<typename Kind>
    void startUntil() {
        app.bootstrap();
        ASSERT_TRUE(reaches<Kind>());
    }
    template<typename Kind>
    bool reaches() {
        return eventually([this] { return isIn<Kind>(app.phase()); });
    }

    /// Runs the start until the chat is ready.
    void start() { startUntil<phase::Ready>(); }

    void finishTurn() {
        ASSERT_TRUE(eventually([this] { return !app.chat().isGenerating(); }));
    }

    static ModelTier tier(const QString &id, qint64 gigabytes, const ScriptedEngine &network) {
        return {.id = id,
                .displayName = id.at(0).toUpper() + id.mid(1),
                .filename = id + QStringLiteral(".gguf"),
                .url = QUrl(network.url().toString() + u'/' + id),
                .sha256 = QString(64, u'0'),
                .sizeBytes = gigabytes * 1'000'000'000,
                .requiredGPUBytes = gigabytes * 1'000'000'000,
                .minRAMBytes = 8'000'000'000,
                .contextLength = 8192,
                .supportsTools = true,
                .license = QStringLiteral("MIT")};
    }

    TemporaryApplicationFolder folder;
    ScriptedEngine engine;
    ScriptedEngine network;
    EnvironmentVariable address{"OSTRELIN_ENGINE_URL", engine.url().toString().toUtf8()};
    EnvironmentVariable catalogAddress{"OSTRELIN_CATALOGURL",
                                       network.url().toString().toUtf8() + "/catalog.json"};
    EnvironmentVariable versionAddress{"OSTRELIN_VERSIONURL",
                                       network.url().toString().toUtf8() + "/version.json"};
    const ModelTier mansion = tier(QStringLiteral("mansion"), 9, network);
    const ModelTier house = tier(QStringLiteral("house"), 3, network);
    const ModelTier tent = tier(QStringLiteral("tent"), 1, network);
    const Catalog catalog{1, {mansion, house, tent}};
    /// Just enough for the house.
    MachineReport machine{
        .totalRAM = 16'000'000'000, .gpuBudget = 4'000'000'000, .freeDisk = 100'000'000'000};
    ManualClock clock;
    EngineProcessBox box;
    AppState app{box, clock,
                 AppState::Machine{.measure = [this](std::stop_token) { return measured(machine); },
                                   .keepAwake = [](const QString &) { return nullptr; }}};

private:
    static Task<MachineReport> measured(MachineReport report) { co_return report; }
};
