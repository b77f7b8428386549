#include "client/LLMClient.h"
#include "conversation/Prompt.h"
#include "engine/EngineLaunch.h"
#include "figures/Figure.h"
#include "figures/Median.h"
#include "platform/LoopbackPort.h"
#include "records/ChatStore.h"
#include "records/Folders.h"
#include "schedules/ScheduleStore.h"
#include "support/Await.h"
#include "support/DemoModel.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryApplicationFolder.h"
#include "tokens/BareClient.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QThread>

#include <cstdio>

// A scheduled run in a process of its own, from its start to the chat on disk, against an engine that is
// started by hand and asked the same by a bare client.

using namespace Qt::StringLiterals;

namespace {

constexpr char name[] = "scheduled run to saved chat (peer: bare engine)";
constexpr int rounds = 7;
constexpr unsigned long betweenLooks = 1; ///< milliseconds

const QString serverPath = QStringLiteral(ENGINE_PATH);

const Schedule schedule{.id = QUuid(u"6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11"_s),
                        .title = u"Garden"_s,
                        .prompt = u"Tell me about your garden."_s,
                        .enabled = true};

/// The demo model as one that says the same each time.
InstalledModel installGreedyModel() {
    installDemoModel();
    Settings settings = loadSettings();
    const Sampling greedy{.temperature = 0, .topP = 1, .topK = 1, .minP = 0, .presencePenalty = 0};
    settings.installed->tierId = u"greedy"_s;
    settings.installed->sampling = greedy;
    saveSettings(settings);
    return *settings.installed;
}

void waitUntil(const QElapsedTimer &timer, const std::function<bool()> &condition) {
    while (!condition()) {
        if (timer.hasExpired(60'000))
            throw std::runtime_error("waited too long");
        QThread::msleep(betweenLooks);
    }
}

double secondsOfRun() {
    for (const ConversationSummary &chat : ChatStore().list())
        ChatStore().remove(chat.id);
    QFile::remove(chatIndexFile());
    saveSchedules({schedule});
    QProcess run;
    QElapsedTimer timer;
    timer.start();
    run.start(QStringLiteral(PROGRAM_PATH),
              {u"--run-schedule"_s, schedule.id.toString(QUuid::WithoutBraces)});
    waitUntil(timer, [] { return QFile::exists(chatIndexFile()); });
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    run.waitForFinished();
    return seconds;
}

QString savedReply() {
    return ChatStore().load(ChatStore().list().value(0).id)->messages.last().content;
}

struct BareAnswer {
    double seconds;
    QString text;
};

BareAnswer answerOfBareEngine(const InstalledModel &model, const QByteArray &body) {
    QProcess server;
    server.setProcessEnvironment(serverEnvironment(QProcessEnvironment::systemEnvironment()));
    server.setStandardErrorFile(QProcess::nullDevice());
    server.setStandardOutputFile(QProcess::nullDevice());
    const quint16 port = freeLoopbackPort().value();
    QElapsedTimer timer;
    timer.start();
    server.start(serverPath, serverArguments(modelsFolder() + u'/' + model.filename, port, u"key"_s,
                                             model.contextLength, reasoningBudget({})));
    waitUntil(timer, [&] { return await(healthStatus(port, u"key"_s, {})) == 200; });
    const QByteArray answer = BareClient(port).post("/v1/chat/completions", "key", body);
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    server.kill();
    server.waitForFinished();
    const QJsonObject json = QJsonDocument::fromJson(answer.sliced(answer.indexOf("\r\n\r\n") + 4)).object();
    return {seconds, json[u"choices"_s][0][u"message"_s][u"content"_s].toString()};
}

void measure() {
    const TemporaryApplicationFolder folder;
    // Nobody wants to be told of these runs.
    const EnvironmentVariable noDesktop("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
    const InstalledModel model = installGreedyModel();
    const QString prompt =
        systemPrompt({.memoryEnabled = true, .today = QDate::currentDate(), .locale = QLocale::system()});
    const Message question{.id = schedule.id, .role = Role::user, .content = schedule.prompt};
    const QByteArray body =
        LLMClient().completeRequest(wireMessages({question}, prompt), model.sampling, 2048).body;

    // The first of each brings the files into memory, and shows that both sides get the same.
    const BareAnswer first = answerOfBareEngine(model, body);
    secondsOfRun();
    if (first.text.isEmpty() || savedReply() != first.text)
        throw std::runtime_error("the two answers differ, so nothing can be compared");
    std::vector<double> ours;
    std::vector<double> bare;
    for (int round = 0; round < rounds; ++round) {
        bare.push_back(answerOfBareEngine(model, body).seconds);
        ours.push_back(secondsOfRun());
    }
    print({.name = name, .value = median(ours), .unit = "s", .peer = median(bare)});
}

} // namespace

int main(int argc, char **argv) {
    if (!isWanted(name, argc > 1 ? argv[1] : ""))
        return 0;
    const QCoreApplication application(argc, argv);
    try {
        measure();
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "schedules: %s\n", error.what());
        return 1;
    }
}
