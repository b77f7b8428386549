#include "engine/EngineLaunch.h"

#include "platform/Http.h"
#include "platform/RandomBytes.h"
#include "records/DecimalInteger.h"

#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

bool isExecutable(const QString &path) {
    const QFileInfo file(path);
    return file.isFile() && file.isExecutable();
}

} // namespace

std::optional<QString> findServerBinary(const QProcessEnvironment &environment, const QString &bundle) {
    const QString named = environment.value(u"OSTRELIN_LLAMA_SERVER"_s);
    for (const QString &path : {named, bundle + u"/Contents/Helpers/llama-server"_s}) {
        if (isExecutable(path))
            return path;
    }
    return std::nullopt;
}

qint64 reasoningBudget(const std::optional<QString> &text) {
    constexpr qint64 usual = 256;
    return decimalInteger(text.value_or(QString())).value_or(usual);
}

QString randomAPIKey() {
    return QString::fromLatin1(randomBytes(32).toHex());
}

QStringList serverArguments(const QString &modelPath, quint16 port, const QString &apiKey,
                            qint64 contextLength, qint64 reasoningBudget) {
    return {u"-m"_s,
            modelPath,
            u"--host"_s,
            u"127.0.0.1"_s,
            u"--port"_s,
            QString::number(port),
            u"--api-key"_s,
            apiKey,
            u"-c"_s,
            QString::number(contextLength),
            u"-ngl"_s,
            u"99"_s,
            u"--jinja"_s,
            u"--reasoning-format"_s,
            u"deepseek"_s,
            u"--no-reasoning-preserve"_s,
            u"--reasoning-budget"_s,
            QString::number(reasoningBudget),
            u"--no-webui"_s,
            u"--no-mmproj"_s,
            u"--offline"_s,
            u"--fit"_s,
            u"off"_s,
            u"-np"_s,
            u"1"_s,
            u"--alias"_s,
            u"ostrelin"_s,
            u"--log-verbosity"_s,
            u"2"_s};
}

QProcessEnvironment serverEnvironment(QProcessEnvironment environment) {
    environment.remove(u"HF_TOKEN"_s);
    environment.insert(u"LLAMA_ARG_OFFLINE"_s, u"1"_s);
    return environment;
}

Task<int> healthStatus(quint16 port, QString key, std::stop_token stop) {
    HttpRequest request;
    request.url = QUrl(u"http://127.0.0.1:%1/health"_s.arg(port));
    request.idleTimeout = std::chrono::milliseconds(2000);
    if (!key.isEmpty())
        request.headers.emplaceBack("Authorization", "Bearer " + key.toUtf8());
    try {
        const int status = co_await fetchStatus(request, stop);
        co_return status;
    } catch (const HttpError &) {
        co_return -1;
    }
}
