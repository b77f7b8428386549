#include "client/LLMClient.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const LLMClient client{QUrl(u"http://127.0.0.1:8080"_s), u"key"_s};
const Sampling sampling{.temperature = 0.5, .topP = 0.75, .topK = 20, .minP = 0.25, .presencePenalty = 1.5};
const QJsonArray messages{QJsonObject{{u"role"_s, u"user"_s}, {u"content"_s, u"Hi"_s}}};

QJsonObject bodyOf(const HttpRequest &request) {
    return QJsonDocument::fromJson(request.body).object();
}

StreamRequest plainStream() {
    StreamRequest request;
    request.messages = messages;
    request.sampling = sampling;
    request.maxTokens = 4096;
    return request;
}

QJsonObject commonBody(bool stream, int maxTokens, bool thinking) {
    return {{u"model"_s, u"ostrelin"_s},
            {u"messages"_s, messages},
            {u"stream"_s, stream},
            {u"temperature"_s, 0.5},
            {u"top_p"_s, 0.75},
            {u"top_k"_s, 20},
            {u"min_p"_s, 0.25},
            {u"presence_penalty"_s, 1.5},
            {u"max_tokens"_s, maxTokens},
            {u"chat_template_kwargs"_s, QJsonObject{{u"enable_thinking"_s, thinking}}}};
}

} // namespace

TEST(LLMClientRequest, itIsAPostToTheChatCompletionsWithSixtySecondsOfPatience) {
    for (const HttpRequest &request :
         {client.streamRequest(plainStream()), client.completeRequest(messages, sampling, 20)}) {
        EXPECT_EQ(request.url, QUrl(u"http://127.0.0.1:8080/v1/chat/completions"_s));
        EXPECT_EQ(request.method, "POST");
        EXPECT_EQ(request.idleTimeout, std::chrono::seconds(60));
    }
}

TEST(LLMClientRequest, thePathOfTheBaseIsKept) {
    for (const QString &base : {u"http://127.0.0.1:1/engine"_s, u"http://127.0.0.1:1/engine/"_s}) {
        const LLMClient elsewhere{QUrl(base), {}};
        EXPECT_EQ(elsewhere.streamRequest(plainStream()).url,
                  QUrl(u"http://127.0.0.1:1/engine/v1/chat/completions"_s));
    }
}

TEST(LLMClientRequest, theKeyIsABearerToken) {
    const QList<std::pair<QByteArray, QByteArray>> expected{{"Content-Type", "application/json"},
                                                            {"Authorization", "Bearer key"}};
    EXPECT_EQ(client.streamRequest(plainStream()).headers, expected);
    EXPECT_EQ(client.completeRequest(messages, sampling, 20).headers, expected);
}

TEST(LLMClientRequest, anEmptyKeyIsNoHeaderAtAll) {
    const LLMClient open{client.baseURL, {}};
    const QList<std::pair<QByteArray, QByteArray>> expected{{"Content-Type", "application/json"}};
    EXPECT_EQ(open.streamRequest(plainStream()).headers, expected);
}

TEST(LLMClientRequest, theBodyOfAStreamHasItsKeysAndNoOthers) {
    EXPECT_EQ(bodyOf(client.streamRequest(plainStream())), commonBody(true, 4096, false));
}

TEST(LLMClientRequest, theBodyOfACompletionHasItsKeysAndNoOthers) {
    EXPECT_EQ(bodyOf(client.completeRequest(messages, sampling, 20)), commonBody(false, 20, false));
}

TEST(LLMClientRequest, thinkingIsSwitchedOnInTheTemplate) {
    StreamRequest request = plainStream();
    request.thinking = Thinking::on;
    EXPECT_EQ(bodyOf(client.streamRequest(request)), commonBody(true, 4096, true));
}

TEST(LLMClientRequest, toolsAreSentWhenThereAreSome) {
    StreamRequest request = plainStream();
    request.tools = {QJsonObject{{u"type"_s, u"function"_s}}};
    QJsonObject expected = commonBody(true, 4096, false);
    expected[u"tools"_s] = request.tools;
    EXPECT_EQ(bodyOf(client.streamRequest(request)), expected);
}

TEST(LLMClientRequest, aContinuationSetsBothFlags) {
    StreamRequest request = plainStream();
    request.continuation = Continuation::finalMessage;
    QJsonObject expected = commonBody(true, 4096, false);
    expected[u"continue_final_message"_s] = true;
    expected[u"add_generation_prompt"_s] = false;
    EXPECT_EQ(bodyOf(client.streamRequest(request)), expected);
}

TEST(LLMClientRequest, integersStayIntegersOnTheWire) {
    const QByteArray body = client.streamRequest(plainStream()).body;
    EXPECT_TRUE(body.contains("\"top_k\":20,") || body.contains("\"top_k\":20}")) << body.toStdString();
    EXPECT_TRUE(body.contains("\"max_tokens\":4096,") || body.contains("\"max_tokens\":4096}"));
}

TEST(LLMClientRequest, halfAPairInATextIsAReplacementCharacter) {
    StreamRequest request = plainStream();
    request.messages = {QJsonObject{{u"content"_s, u"a"_s + QChar(0xD83D) + u"b"_s}}};
    const QByteArray body = client.streamRequest(request).body;
    EXPECT_TRUE(body.contains(R"("content":"a\ufffdb")")) << body.toStdString();
}
