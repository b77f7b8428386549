#pragma once

#include "conversation/ChatController.h"
#include "engine/EngineManager.h"
#include "engine/EngineProcessBox.h"
#include "platform/Clock.h"
#include "records/ChatStore.h"
#include "support/Await.h"
#include "support/DemoModel.h"
#include "support/FakeHost.h"
#include "support/TemporaryApplicationFolder.h"

#include <memory>

/// A chat on the real engine with the demo model, its files in a folder of its own. A missing engine
/// fails every test.
class EngineFixture : public ::testing::Test {
protected:
    EngineFixture();
    ~EngineFixture() override;

    void SetUp() override;

    /// Starts the engine with the demo model, and lets the chat have it.
    void start(qint64 contextLength = 4096);

    /// Sends and waits for the end of the turn.
    void say(const QString &text);

    /// The same with an engine in whose replies there is no end.
    void startEndless();

    /// Sends, and returns in the middle of the reply.
    void sayUntilText(const QString &text);

    const QList<Message> &messages() const { return chat->conversation()->messages; }

    /// The chat as it stands on disk.
    Conversation saved() const;

    /// The engine's process id, from its file; 0 if there is none.
    qint64 pid() const;

    TemporaryApplicationFolder folder;
    EngineProcessBox box;
    EngineManager engine{box, Clock::system()};
    FakeHost host;
    std::unique_ptr<ChatController> chat;
};
