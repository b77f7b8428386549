#include "client/ReplyStream.h"

#include "client/LLMClient.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ScriptedEngine.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

class Streaming : public ::testing::Test {
protected:
    std::unique_ptr<ChunkStream> open() { return LLMClient{engine.url(), u"key"_s}.stream(StreamRequest()); }

    /// Reads a stream to its end; what it throws comes out.
    static QList<StreamChunk> readAll(ChunkStream &stream) {
        QList<StreamChunk> chunks;
        while (const auto chunk = await(stream.next({})))
            chunks.append(*chunk);
        return chunks;
    }

    QString text() {
        QString text;
        for (const StreamChunk &chunk : readAll(*open()))
            text += chunk.content;
        return text;
    }

    QString failure() {
        try {
            readAll(*open());
        } catch (const OstrelinError &error) {
            return error.description();
        }
        return u"no failure"_s;
    }

    ScriptedEngine engine;
};

} // namespace

TEST_F(Streaming, chunksComeInTheOrderOfTheirLines) {
    engine.answer(Script().reasoning(u"hm"_s).content(u"Hel"_s).content(u"lo"_s).finish(u"stop"_s).done());
    const QList<StreamChunk> expected{{{}, u"hm"_s, {}, {}},
                                      {u"Hel"_s, {}, {}, {}},
                                      {u"lo"_s, {}, {}, {}},
                                      {{}, {}, {}, u"stop"_s},
                                      {{}, {}, {}, u"done"_s}};
    EXPECT_EQ(readAll(*open()), expected);
}

TEST_F(Streaming, aPieceMayEndInsideALineOrACharacter) {
    const QByteArray whole = Script::reply({u"Grüße, 世界 👋🏽"_s}).steps.first().bytes;
    Script script;
    for (const char byte : whole)
        script.raw(QByteArray(1, byte)).pause(1);
    engine.answer(script.done());
    EXPECT_EQ(text(), u"Grüße, 世界 👋🏽"_s);
}

TEST_F(Streaming, keepAliveCommentsAndMalformedLinesAreSkipped) {
    engine.answer(Script()
                      .raw(": keep-alive\n\nevent: x\nid: 3\n")
                      .content(u"a"_s)
                      .raw("data: {broken\n\nnonsense\n\n")
                      .content(u"b"_s)
                      .done());
    EXPECT_EQ(text(), u"ab"_s);
}

TEST_F(Streaming, carriageReturnsEndLinesToo) {
    Script script;
    script.raw("data: {\"choices\":[{\"delta\":{\"content\":\"a\"}}]}\r").raw("\ndata: [DONE]\r\n");
    engine.answer(script);
    EXPECT_EQ(text(), u"a"_s);
}

TEST_F(Streaming, aFinishReasonDoesNotEndTheReading) {
    engine.answer(
        Script().content(u"a"_s).finish(u"stop"_s).content(u"b"_s).finish(u"length"_s).content(u"c"_s));
    EXPECT_EQ(text(), u"abc"_s);
}

TEST_F(Streaming, nothingIsReadAfterTheClosingLine) {
    engine.answer(Script().content(u"a"_s).done().content(u"b"_s).hold());
    EXPECT_EQ(text(), u"a"_s);
}

TEST_F(Streaming, aBodyThatEndsWithoutTheClosingLineEndsNormally) {
    engine.answer(Script().content(u"a"_s).raw("data: {\"choices\":[{\"delta\":{\"content\":\"b\"}}]}"));
    EXPECT_EQ(text(), u"ab"_s);
}

TEST_F(Streaming, toolCallFragmentsArrive) {
    engine.answer(Script::toolCall(u"c1"_s, u"web_search"_s, u"{\"query\":\"x\"}"_s));
    const QList<StreamChunk> chunks = readAll(*open());
    ASSERT_FALSE(chunks.isEmpty());
    EXPECT_EQ(chunks.first().toolDeltas,
              (QList<ToolCallDelta>{{0, u"c1"_s, u"web_search"_s, u"{\"query\":\"x\"}"_s}}));
}

TEST_F(Streaming, aWrongKeyHasASentenceOfItsOwn) {
    engine.answer(Script(401).raw("{\"error\":{}}"));
    EXPECT_EQ(failure(), u"The engine rejected the request."_s);
}

TEST_F(Streaming, anyOtherStatusIsAFailedReplyWithoutTheServersWords) {
    engine.answer(Script(500).raw("internal detail"));
    EXPECT_EQ(failure(), u"Ostrelin couldn't complete that reply."_s);
}

TEST_F(Streaming, aRefusalIsToldBeforeTheBodyHasEnded) {
    engine.answer(Script(400).raw("partial").hold());
    EXPECT_EQ(failure(), u"Ostrelin couldn't complete that reply."_s);
    EXPECT_TRUE(eventually([&] { return engine.openConnections() == 0; }));
}

TEST_F(Streaming, aDroppedConnectionFailsAfterWhatHadArrived) {
    engine.answer(Script().content(u"half"_s).pause(20).drop());
    const auto stream = open();
    EXPECT_EQ(await(stream->next({}))->content, u"half"_s);
    EXPECT_THROW(await(stream->next({})), HttpError);
    EXPECT_FALSE(await(stream->next({}))) << "an error is told once";
}

TEST_F(Streaming, aServerThatHangsUpWithoutAWordIsAskedOnce) {
    engine.answer(Script::hangUp());
    EXPECT_THROW(readAll(*open()), HttpError);
    letPass(100);
    EXPECT_EQ(engine.requests().size(), 1);
}

TEST_F(Streaming, aServerThatHangsUpOnAConnectionKeptAliveIsAskedOnce) {
    engine.answer(Script::reply({u"first"_s}));
    engine.answer(Script::hangUp());
    EXPECT_EQ(text(), u"first"_s);
    EXPECT_THROW(readAll(*open()), HttpError);
    letPass(100);
    EXPECT_EQ(engine.requests().size(), 2);
}

TEST_F(Streaming, aRequestOfAMegabyteArrivesWhole) {
    engine.answer(Script::reply({u"ok"_s}));
    StreamRequest request;
    request.messages = {QJsonObject{{u"role"_s, u"user"_s}, {u"content"_s, QString(1'000'000, u'ä')}}};
    const auto stream = LLMClient{engine.url(), {}}.stream(request);
    readAll(*stream);
    EXPECT_EQ(engine.requests().first().json()["messages"_L1].toArray(), request.messages);
}

TEST_F(Streaming, destroyingTheStreamClosesTheConnectionAtOnce) {
    engine.answer(Script().repeat("data: {\"choices\":[{\"delta\":{\"content\":\"x\"}}]}\n\n"));
    auto stream = open();
    EXPECT_EQ(await(stream->next({}))->content, u"x"_s);
    EXPECT_EQ(engine.openConnections(), 1);
    stream.reset();
    EXPECT_TRUE(eventually([&] { return engine.openConnections() == 0; }));
}

TEST_F(Streaming, aStopEndsTheStreamWithoutAnError) {
    engine.answer(Script().content(u"a"_s).hold());
    std::stop_source stop;
    const auto stream = open();
    EXPECT_EQ(await(stream->next(stop.get_token()))->content, u"a"_s);
    stop.request_stop();
    EXPECT_FALSE(await(stream->next(stop.get_token())));
}

TEST_F(Streaming, aStopClosesTheConnectionBeforeTheReaderIsWokenUp) {
    engine.answer(Script().content(u"one"_s).hold());
    const auto stream = open();
    await(stream->next({}));
    std::stop_source stop;
    const auto waiting = stream->next(stop.get_token());
    stop.request_stop();
    // No event loop runs here, as in a program that waits for its server's end while it quits.
    QDeadlineTimer deadline(5000);
    while (engine.openConnections() > 0 && !deadline.hasExpired())
        QThread::msleep(1);
    EXPECT_EQ(engine.openConnections(), 0);
}

TEST_F(Streaming, aStopBeatsChunksThatWait) {
    engine.answer(Script::reply({u"a"_s, u"b"_s}));
    std::stop_source stop;
    const auto stream = open();
    EXPECT_TRUE(await(stream->next(stop.get_token())));
    letPass(50);
    stop.request_stop();
    EXPECT_FALSE(await(stream->next(stop.get_token())));
}

TEST_F(Streaming, theReaderNeverWaitsForTheConsumer) {
    Script script;
    for (int index = 0; index < 2000; ++index)
        script.content(QString::number(index % 10));
    engine.answer(script.done());
    const auto stream = open();
    // The network thread reads on while this one sleeps; the server is done before the first chunk is taken.
    QTest::qSleep(300);
    QString all;
    while (const auto chunk = await(stream->next({})))
        all += chunk->content;
    EXPECT_EQ(all.size(), 2000);
}

TEST_F(Streaming, aConnectionWithoutAByteTimesOut) {
    engine.answer(Script::silence());
    HttpRequest request = LLMClient{engine.url(), {}}.streamRequest(StreamRequest());
    request.idleTimeout = std::chrono::milliseconds(200);
    ReplyStream stream(request);
    try {
        await(stream.next({}));
        ADD_FAILURE();
    } catch (const HttpError &error) {
        EXPECT_EQ(error.reason(), HttpError::Reason::timedOut);
    }
}

TEST_F(Streaming, aSlowStreamDoesNotTimeOutWhileItGoesOn) {
    Script script;
    for (int index = 0; index < 8; ++index)
        script.content(u"x"_s).pause(100);
    engine.answer(script.done());
    HttpRequest request = LLMClient{engine.url(), {}}.streamRequest(StreamRequest());
    request.idleTimeout = std::chrono::milliseconds(400);
    ReplyStream stream(request);
    EXPECT_EQ(readAll(stream).size(), 9);
}

TEST_F(Streaming, theLoopbackIsNeverReachedThroughAProxy) {
    const EnvironmentVariable proxy("http_proxy", "http://127.0.0.1:9");
    engine.answer(Script::reply({u"direct"_s}));
    EXPECT_EQ(text(), u"direct"_s);
}

TEST_F(Streaming, noCookiesAreSent) {
    engine.answer(Script::reply({u"a"_s}));
    text();
    text();
    EXPECT_FALSE(engine.requests().last().headers.contains("cookie"));
}
