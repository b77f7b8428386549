#include "client/PacedStream.h"
#include "conversation/Prompt.h"
#include "conversation/TurnServices.h"
#include "e2e/EngineFixture.h"
#include "e2e/ProcessStatus.h"
#include "support/ManualClock.h"

using namespace Qt::StringLiterals;

namespace {

class EngineReply : public EngineFixture {
protected:
    LLMClient client() const { return {*engine.baseURL(), engine.apiKey()}; }

    StreamRequest request(const QString &question) const {
        StreamRequest request;
        const Message message{.id = QUuid::createUuid(), .role = Role::user, .content = question};
        request.messages = wireMessages({message}, systemPrompt({.today = QDate(2026, 11, 15)}));
        request.sampling = host.tier->sampling;
        request.maxTokens = 4096;
        return request;
    }

    /// The same question with the beginning of the answer, of which the rest is wanted.
    static StreamRequest continued(StreamRequest request, const QString &beginning, int maxTokens) {
        request.messages.append(QJsonObject{{u"role"_s, u"assistant"_s}, {u"content"_s, beginning}});
        request.continuation = Continuation::finalMessage;
        request.maxTokens = maxTokens;
        return request;
    }

    static StreamRequest shortened(StreamRequest request, int maxTokens) {
        request.maxTokens = maxTokens;
        return request;
    }

    struct Reply {
        QString content;
        QString reasoning;
        QString end;
    };

    /// The whole stream in one.
    static Task<Reply> read(std::unique_ptr<ChunkStream> stream) {
        Reply reply;
        while (const auto chunk = co_await stream->next({})) {
            reply.content += chunk->content;
            reply.reasoning += chunk->reasoning;
            if (chunk->finishReason)
                reply.end += *chunk->finishReason + u' ';
        }
        co_return reply;
    }

    Reply read(const StreamRequest &request) { return await(read(client().stream(request))); }
};

const QString plan = u"I have a job interview next week. Make me a short prep plan."_s;

} // namespace

TEST_F(EngineReply, aChatOfThreeTurnsReadsBackAsItWasWritten) {
    start();
    for (const QString &text :
         {u"Hello!"_s, u"Who are you?"_s, u"Brainstorm five names for a neighborhood coffee shop."_s})
        say(text);
    ASSERT_EQ(messages().size(), 6);
    for (int index = 0; index < 6; ++index) {
        EXPECT_EQ(messages().at(index).role, index % 2 == 0 ? Role::user : Role::assistant);
        EXPECT_FALSE(messages().at(index).content.trimmed().isEmpty());
    }
    EXPECT_EQ(saved(), *chat->conversation());
    ASSERT_EQ(chat->summaries().size(), 1);
    EXPECT_EQ(ChatStore().rebuildIndex(), (QList{summaryOf(saved())}));
}

TEST_F(EngineReply, theSameQuestionHasTheSameExactReply) {
    start();
    const Reply first = read(request(plan));
    const Reply second = read(request(plan));
    EXPECT_GT(first.content.size(), 100);
    EXPECT_EQ(first.content, second.content);
    EXPECT_EQ(first.end, u"stop done "_s);
}

TEST_F(EngineReply, aReplyOfSoManyTokensEndsWithLength) {
    start();
    EXPECT_EQ(read(shortened(request(plan), 6)).end, u"length done "_s);
}

TEST_F(EngineReply, theCompletionAndTheStreamSayTheSame) {
    start();
    const StreamRequest asked = request(u"Hello!"_s);
    EXPECT_EQ(await(client().complete(asked.messages, asked.sampling, 4096, {})), read(asked).content);
}

TEST_F(EngineReply, aContinuedReplyGoesOnExactlyWhereItStopped) {
    start();
    const QString whole = read(request(plan)).content;
    for (const int tokens : {6, 16, 40}) {
        const QString beginning = read(shortened(request(plan), tokens)).content;
        ASSERT_LT(beginning.size(), whole.size());
        const Reply rest = read(continued(request(plan), beginning, 4096));
        EXPECT_EQ(beginning + rest.content, whole) << tokens << " tokens";
        EXPECT_TRUE(rest.reasoning.isEmpty());
    }
}

TEST_F(EngineReply, aReplyInBurstsEqualsTheReplyInOneGo) {
    start();
    const QString whole = read(request(plan)).content;
    Reply reply = read(shortened(request(plan), 16));
    QString text = reply.content;
    for (int burst = 0; burst < 50 && reply.end.startsWith(u"length"_s); ++burst) {
        reply = read(continued(request(plan), text, 6));
        text += reply.content;
    }
    EXPECT_EQ(text, whole);
}

TEST_F(EngineReply, aPacedReplyEqualsTheUnpacedOne) {
    start();
    const Reply whole = read(request(plan));
    ManualClock clock(ManualClock::Sleep::skipped);
    for (const Pace &pace : {*paceOf(ResponseSpeed::calm), *paceOf(ResponseSpeed::slowYourRoll)}) {
        const Reply paced = await(read(std::make_unique<PacedStream>(client(), request(plan), pace, clock)));
        EXPECT_EQ(paced.content, whole.content) << pace.burstTokens << " tokens";
        EXPECT_EQ(paced.end, u"stop "_s);
    }
    EXPECT_GT(clock.elapsed(), std::chrono::seconds(10));
}

TEST_F(EngineReply, theEngineRestsBetweenTwoBursts) {
    start();
    for (const ResponseSpeed speed : {ResponseSpeed::calm, ResponseSpeed::slowYourRoll}) {
        const Pace pace = *paceOf(speed);
        ManualClock clock;
        PacedStream stream(client(), request(plan), pace, clock);
        ASSERT_TRUE(await(stream.next({})));
        for (int burst = 0; burst < 3; ++burst) {
            for (int token = 1; token < pace.burstTokens; ++token)
                ASSERT_TRUE(await(stream.next({})));
            auto firstOfNext = stream.next({});
            EXPECT_TRUE(comesToRest(pid(), 2000)) << pace.burstTokens << " tokens";
            clock.advance(pace.rest);
            ASSERT_TRUE(await(std::move(firstOfNext)));
        }
    }
}

TEST_F(EngineReply, theEngineWorksLessTheGentlerTheSpeed) {
    startEndless();
    chat = std::make_unique<ChatController>(&host, Clock::system(), turnServices(Clock::system()));
    const auto workAt = [this](ResponseSpeed speed) {
        host.fakeSettings.responseSpeed = speed;
        chat->newChat();
        sayUntilText(u"Hello!"_s);
        const qint64 before = processorTicks(pid());
        letPass(2500);
        const qint64 work = processorTicks(pid()) - before;
        EXPECT_TRUE(chat->isGenerating());
        chat->stop();
        return work;
    };
    const qint64 full = workAt(ResponseSpeed::full);
    const qint64 calm = workAt(ResponseSpeed::calm);
    const qint64 slow = workAt(ResponseSpeed::slowYourRoll);
    // Within one run on one machine: calm works for some sixteen tokens of every second, the slowest for six
    // of every five.
    EXPECT_LT(calm * 2, full);
    EXPECT_LT(slow * 2, calm + 2);
}

TEST_F(EngineReply, aWrongKeyIsRejected) {
    start();
    const LLMClient stranger{*engine.baseURL(), u"wrong"_s};
    const StreamRequest asked = request(u"Hello!"_s);
    const auto rejected = OstrelinError::message(u"The engine rejected the request."_s);
    EXPECT_THROW(await(stranger.complete(asked.messages, asked.sampling, 16, {})), OstrelinError);
    try {
        await(read(stranger.stream(asked)));
        ADD_FAILURE() << "it answered";
    } catch (const OstrelinError &error) {
        EXPECT_EQ(error, rejected);
    }
}

TEST_F(EngineReply, aPromptThatExceedsTheContextHasASentence) {
    // The chat believes in more room than the engine has, and so leaves nothing out.
    start(256);
    say(u"Please tell me about "_s + u"this and that and so on, "_s.repeated(60));
    EXPECT_EQ(messages().last().role, Role::assistant);
    EXPECT_EQ(messages().last().content, u"Ostrelin couldn't complete that reply."_s);
    EXPECT_EQ(saved(), *chat->conversation());

    chat->newChat();
    say(u"Hello!"_s);
    EXPECT_FALSE(messages().last().content.isEmpty());
    EXPECT_NE(messages().last().content, u"Ostrelin couldn't complete that reply."_s);
}

TEST_F(EngineReply, noTextOfAChatMakesItUnreadable) {
    start();
    Message calling{.id = QUuid::createUuid(), .role = Role::assistant, .content = {}};
    calling.toolCalls.emplace();
    QList<Message> history{
        {.id = QUuid::createUuid(), .role = Role::user, .content = u"half \xD83D a pair"_s}, calling};
    for (const QString &arguments :
         {uR"({"query":"it\'s"})"_s, u"{\"query\":\"a\nb\"}"_s, uR"({"query":"\ud83d"})"_s, uR"({"a":1.})"_s,
          uR"({"query":"\u0000 \/ 🎉 \ud83c\udf89"})"_s, u"{\"query\": \"x"_s, u"[1e5, -0.25E-2]"_s}) {
        const QString id = QString::number(history.at(1).toolCalls->size());
        history[1].toolCalls->append({id, u"web_search"_s, arguments});
        history.append(
            {.id = QUuid::createUuid(), .role = Role::tool, .content = u"None."_s, .toolCallId = id});
    }
    history.append({.id = QUuid::createUuid(), .role = Role::user, .content = u"Hello!"_s});
    StreamRequest asked = request(plan);
    asked.messages = wireMessages(history, systemPrompt({.today = QDate(2026, 11, 15)}));
    asked.maxTokens = 4;
    EXPECT_FALSE(read(asked).content.isEmpty());
}
