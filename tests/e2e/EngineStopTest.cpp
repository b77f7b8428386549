#include "e2e/EngineFixture.h"
#include "e2e/ProcessStatus.h"
#include "records/Folders.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QTcpSocket>

#include <random>

using namespace Qt::StringLiterals;

namespace {

class EngineStop : public EngineFixture {
protected:
    /// Somebody else's request for a reply that has no end: the bytes of it as HTTP wants them.
    QByteArray strangersRequest() const {
        const QJsonObject question{{u"role"_s, u"user"_s}, {u"content"_s, u"Hello!"_s}};
        const QJsonObject body{{u"messages"_s, QJsonArray{question}}, {u"stream"_s, true}};
        const QByteArray text = QJsonDocument(body).toJson();
        return "POST /v1/chat/completions HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/json\r\n"
               "Authorization: Bearer " +
               engine.apiKey().toLatin1() + "\r\nContent-Length: " + QByteArray::number(text.size()) +
               "\r\n\r\n" + text;
    }
};

} // namespace

TEST_F(EngineStop, aReplyStoppedInTheMiddleIsKeptAndTheEngineRests) {
    startEndless();
    sayUntilText(u"Hello!"_s);
    chat->stop();
    EXPECT_FALSE(chat->isGenerating());
    EXPECT_TRUE(comesToRest(pid(), 10'000)) << "the engine goes on with a reply that nobody reads";

    EXPECT_EQ(messages().last().role, Role::assistant);
    EXPECT_FALSE(messages().last().content.isEmpty());
    EXPECT_EQ(saved(), *chat->conversation());
}

TEST_F(EngineStop, theNextMessageIsAnsweredAfterAStop) {
    startEndless();
    for (int round = 1; round <= 3; ++round) {
        sayUntilText(u"Hello!"_s);
        chat->stop();
        ASSERT_TRUE(eventually([this] { return saved() == *chat->conversation(); }))
            << "the stopped turn isn't over";
        ASSERT_EQ(messages().size(), 2 * round);
        EXPECT_FALSE(messages().last().content.isEmpty());
    }
}

TEST_F(EngineStop, fiftyStopsAtRandomMomentsLeaveAWholeChatAndAnIdleEngine) {
    startEndless();
    std::mt19937 random(20'261'121);
    std::uniform_int_distribution moment(0, 60);
    for (int round = 1; round <= 50; ++round) {
        // A chat of its own each: the model's context is small.
        chat->newChat();
        chat->send(u"Hello!"_s);
        letPass(moment(random));
        chat->stop();
        ASSERT_TRUE(eventually([this] { return saved() == *chat->conversation(); })) << "in round " << round;
        ASSERT_GE(messages().size(), 1);
        ASSERT_LE(messages().size(), 2);
        EXPECT_EQ(messages().first().content, u"Hello!"_s);
        EXPECT_FALSE(chat->isGenerating());
    }
    EXPECT_TRUE(comesToRest(pid(), 10'000));
    EXPECT_EQ(chat->summaries().size(), 50);
}

TEST_F(EngineStop, aLongReplyStopsAtOnceToo) {
    startEndless();
    sayUntilText(u"Hello!"_s);
    ASSERT_TRUE(eventually([this] { return messages().last().content.size() > 1000; }, 30'000));
    chat->stop();
    EXPECT_TRUE(comesToRest(pid(), 10'000));
}

TEST_F(EngineStop, aServerWhoseReplyWasStoppedIsGoneQuickly) {
    startEndless();
    const qint64 server = pid();
    sayUntilText(u"Hello!"_s);
    chat->stop();
    ASSERT_TRUE(comesToRest(server, 10'000));
    QElapsedTimer timer;
    timer.start();
    engine.stop();
    EXPECT_LT(timer.elapsed(), 1500) << "it lingered, and so a connection was still open";
    EXPECT_FALSE(isAlive(server));
    EXPECT_FALSE(QFile::exists(enginePidFile()));
}

TEST_F(EngineStop, anIdleServerIsGoneQuickly) {
    start();
    const qint64 server = pid();
    QElapsedTimer timer;
    timer.start();
    engine.stop();
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_FALSE(isAlive(server));
}

TEST_F(EngineStop, aServerThatSomebodyElseReadsFromIsKilledAfterThreeSeconds) {
    startEndless();
    const qint64 server = pid();
    QTcpSocket stranger;
    stranger.connectToHost(u"127.0.0.1"_s, quint16(engine.baseURL()->port()));
    ASSERT_TRUE(stranger.waitForConnected());
    stranger.write(strangersRequest());
    ASSERT_TRUE(eventually([&] { return stranger.readAll().contains("data: "); })) << "no reply began";

    QElapsedTimer timer;
    timer.start();
    box.terminate();
    EXPECT_LT(timer.elapsed(), 4000);
    EXPECT_TRUE(eventually([&] { return !isAlive(server) && !box.isRunning(); }, 1000));
    EXPECT_NE(engine.status().state, EngineStatus::State::failed) << "the exit was expected";
}
