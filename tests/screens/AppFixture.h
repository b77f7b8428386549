#pragma once

#include "core/AppState.h"
#include "engine/EngineProcessBox.h"
#include "platform/Mailbox.h"
#include "records/Folders.h"
#include "screens/Screen.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ManualClock.h"
#include "support/ScriptedEngine.h"
#include "support/TemporaryApplicationFolder.h"

#include <QFile>

/// The application on a folder with a model and nothing else, with an engine that says what it is told.
class AppFixture : public testing::Test {
protected:
    AppFixture() {
        Mailbox::main();
        ensureFolders();
        const QString name = QStringLiteral("house.gguf");
        QFile model(modelsFolder() + u'/' + name);
        EXPECT_TRUE(model.open(QIODevice::WriteOnly));
        Settings settings;
        settings.installed =
            InstalledModel{.tierId = QStringLiteral("house"), .filename = name, .contextLength = 8192};
        saveSettings(settings);
    }

    /// Runs the start until the chat is ready.
    void start() {
        app.bootstrap();
        ASSERT_TRUE(eventually([this] { return std::holds_alternative<phase::Ready>(app.phase()); }));
    }

    void finishTurn() {
        ASSERT_TRUE(eventually([this] { return !app.chat().isGenerating(); }));
    }

    TemporaryApplicationFolder folder;
    ScriptedEngine engine;
    EnvironmentVariable address{"OSTRELIN_ENGINE_URL", engine.url().toString().toUtf8()};
    ManualClock clock;
    EngineProcessBox box;
    AppState app{box, clock};
};
