#include "client/LLMClient.h"

#include "client/ReplyStatus.h"
#include "client/ReplyStream.h"
#include "client/StrictJson.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace {

QJsonObject commonBody(const QJsonArray &messages, const Sampling &sampling, int maxTokens,
                       Thinking thinking) {
    return {{u"model"_s, LLMClient::modelName.toString()},
            {u"messages"_s, messages},
            {u"temperature"_s, sampling.temperature},
            {u"top_p"_s, sampling.topP},
            {u"top_k"_s, sampling.topK},
            {u"min_p"_s, sampling.minP},
            {u"presence_penalty"_s, sampling.presencePenalty},
            {u"max_tokens"_s, maxTokens},
            {u"chat_template_kwargs"_s, QJsonObject{{u"enable_thinking"_s, thinking == Thinking::on}}}};
}

HttpRequest requestOf(const LLMClient &client, const QJsonObject &body) {
    HttpRequest request;
    request.method = "POST";
    request.url = client.baseURL;
    QString path = client.baseURL.path();
    while (path.endsWith(u'/'))
        path.chop(1);
    request.url.setPath(path + u"/v1/chat/completions"_s);
    request.headers.emplaceBack("Content-Type", "application/json");
    if (!client.apiKey.isEmpty())
        request.headers.emplaceBack("Authorization", "Bearer " + client.apiKey.toUtf8());
    request.body = strictJson(QJsonDocument(body));
    return request;
}

} // namespace

HttpRequest LLMClient::completeRequest(const QJsonArray &messages, const Sampling &sampling,
                                       int maxTokens) const {
    QJsonObject body = commonBody(messages, sampling, maxTokens, Thinking::off);
    body[u"stream"_s] = false;
    return requestOf(*this, body);
}

HttpRequest LLMClient::streamRequest(const StreamRequest &request) const {
    QJsonObject body = commonBody(request.messages, request.sampling, request.maxTokens, request.thinking);
    body[u"stream"_s] = true;
    if (!request.tools.isEmpty())
        body[u"tools"_s] = request.tools;
    if (request.continuation == Continuation::finalMessage) {
        body[u"continue_final_message"_s] = true;
        body[u"add_generation_prompt"_s] = false;
    }
    return requestOf(*this, body);
}

Task<QString> LLMClient::complete(QJsonArray messages, Sampling sampling, int maxTokens,
                                  std::stop_token stop) const {
    const HttpResponse response = co_await fetch(completeRequest(messages, sampling, maxTokens), stop);
    if (const auto refusal = refusalOf(response.status))
        throw OstrelinError(*refusal);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(response.body, &error);
    if (error.error != QJsonParseError::NoError)
        throw JsonError(error.errorString().toStdString());
    const QJsonObject choice = document.object()["choices"_L1].toArray().first().toObject();
    co_return choice["message"_L1].toObject()["content"_L1].toString();
}

std::unique_ptr<ChunkStream> LLMClient::stream(const StreamRequest &request) const {
    return std::make_unique<ReplyStream>(streamRequest(request));
}
