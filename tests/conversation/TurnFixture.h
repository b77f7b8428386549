#pragma once

#include "conversation/ChatController.h"
#include "records/ChatStore.h"
#include "records/Folders.h"
#include "support/Await.h"
#include "support/FakeHost.h"
#include "support/ManualClock.h"
#include "support/ScriptedEngine.h"
#include "support/TemporaryApplicationFolder.h"

#include <QJsonArray>
#include <QSignalSpy>

#include <memory>

/// A chat against a scripted engine, with its files in a folder of its own.
class TurnFixture : public ::testing::Test {
protected:
    TurnFixture() {
        ensureFolders();
        host.url = engine.url();
        makeChat({});
    }

    void makeChat(TurnPoints points) {
        chat = std::make_unique<ChatController>(&host, clock, std::move(points));
    }

    /// Sends and waits for the end of the turn.
    void say(const QString &text, Thinking think = Thinking::off) {
        chat->send(text, think);
        EXPECT_TRUE(waitForTurn());
    }

    bool waitForTurn() {
        return eventually([this] { return !chat->isGenerating(); });
    }

    const QList<Message> &messages() const { return chat->conversation()->messages; }
    Message last() const { return messages().last(); }

    /// The chat as it stands on disk.
    Conversation saved() const {
        const auto conversation = ChatStore().load(chat->conversation()->id);
        EXPECT_TRUE(conversation);
        return conversation.value_or(Conversation());
    }

    QJsonObject body(qsizetype request) const { return engine.requests().at(request).json(); }
    QString prompt(qsizetype request) const {
        return body(request)[QLatin1String("messages")]
            .toArray()
            .at(0)
            .toObject()[QLatin1String("content")]
            .toString();
    }

    TemporaryApplicationFolder folder;
    ScriptedEngine engine;
    FakeHost host;
    ManualClock clock;
    std::unique_ptr<ChatController> chat;
};
