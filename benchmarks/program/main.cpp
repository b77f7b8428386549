#include "figures/Figure.h"
#include "figures/Median.h"
#include "figures/SampleReply.h"
#include "program/PacedEngine.h"
#include "program/WatchedProgram.h"
#include "records/ChatStore.h"
#include "support/DemoModel.h"
#include "support/ScriptedEngine.h"
#include "support/TemporaryApplicationFolder.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <functional>
#include <thread>
#include <vector>

// The whole program as a person starts it, in a process of its own, beside the barest Qt program.

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int tokensOfReply = 2000;
const QString program = QStringLiteral(PROGRAM_PATH);
const QString bareWindow = QStringLiteral(BARE_WINDOW_PATH);
const QString bareText = QStringLiteral(BARE_TEXT_PATH);

void pass(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

void waitUntil(const std::function<bool()> &condition, const char *what) {
    for (int tries = 0; !condition(); ++tries) {
        if (tries > 3000)
            throw std::runtime_error(std::string("waited too long for ") + what);
        pass(20ms);
    }
}

/// From the start of the process to the first painted window; with the real engine, which starts then. The
/// catalog is asked for at that address.
void measureStart(Figure figure, const QString &catalog) {
    constexpr int rounds = 15;
    const auto start = [&](const QString &path) {
        WatchedProgram started(path, u"quit"_s, {{u"OSTRELIN_CATALOGURL"_s, catalog}});
        const double seconds = started.secondsToPaint();
        started.waitForEnd();
        return seconds * 1000;
    };
    // The first start of each brings the files into memory.
    start(bareWindow);
    start(program);
    std::vector<double> bare;
    std::vector<double> ours;
    for (int round = 0; round < rounds; ++round) {
        bare.push_back(start(bareWindow));
        ours.push_back(start(program));
    }
    figure.value = median(ours);
    figure.peer = median(bare);
    print(figure);
}

void measureStartRefused(Figure figure) {
    measureStart(std::move(figure), u"http://127.0.0.1:9/catalog.json"_s);
}

void measureStartAnswered(Figure figure) {
    ScriptedEngine server;
    QFile catalog(QStringLiteral(CATALOG_PATH));
    if (!catalog.open(QIODevice::ReadOnly))
        throw std::runtime_error("there is no catalog");
    server.answer(Script(200).raw(catalog.readAll()));
    measureStart(std::move(figure), server.url().toString());
}

void measureStartSilent(Figure figure) {
    ScriptedEngine server;
    server.answer(Script::silence());
    measureStart(std::move(figure), server.url().toString());
}

/// Throws if no chat of so many messages has been saved.
void requireMessages(qsizetype count) {
    const ChatStore store{};
    for (const ConversationSummary &row : store.list()) {
        const std::optional<Conversation> chat = store.load(row.id);
        if (chat && chat->messages.size() == count)
            return;
    }
    throw std::runtime_error("the program has not sent every message");
}

/// At rest, after 100 questions were typed and 100 replies of a thousand characters came.
void measureMemory(Figure figure) {
    constexpr double megabyte = 1e6;
    constexpr int exchanges = 100;
    WatchedProgram bare(bareWindow, u"stay"_s);
    bare.secondsToPaint();
    PacedEngine engine(sampleTokens(1000), 0ns);
    WatchedProgram ours(program, u"send=%1"_s.arg(exchanges), {{u"OSTRELIN_ENGINE_URL"_s, engine.url()}});
    ours.waitFor("sent");
    waitUntil([&] { return engine.sent() >= exchanges; }, "the last reply");
    pass(2s);
    requireMessages(2 * exchanges);
    figure.value = ours.residentBytes() / megabyte;
    figure.peer = bare.residentBytes() / megabyte;
    print(figure);
}

/// The processor time that a program takes for each token of a reply at 200 a second, with everything else
/// that it does meanwhile. What it takes for the reply's head doesn't count.
double secondsOfToken(const std::string &name, const QString &path, const QString &orders,
                      const QList<QString> &reply, const QString &head = {}) {
    const auto tokens = static_cast<double>(reply.size());
    PacedEngine engine(reply, 5ms, head.isEmpty() ? 0s : 3s, head);
    const WatchedProgram watched(path, orders, {{u"OSTRELIN_ENGINE_URL"_s, engine.url()}});
    waitUntil([&] { return engine.begun() == 1; }, "the question");
    const double before = watched.processorSeconds();
    waitUntil([&] { return engine.sent() == 1; }, "the reply's end");
    pass(200ms);
    const double used = watched.processorSeconds() - before;
    const double seconds = std::chrono::duration<double>(engine.duration()).count();
    if (seconds > tokens * 0.005 * 1.05)
        std::fprintf(stderr, "%s: the machine was too busy, only %.0f chunks came in a second\n",
                     name.c_str(), tokens / seconds);
    return used / tokens;
}

void measureChunks(Figure figure) {
    const QList<QString> reply = sampleTokens(8 * tokensOfReply).first(tokensOfReply);
    figure.value = secondsOfToken(figure.name, program, u"send=1"_s, reply) * 1000;
    figure.peer = secondsOfToken(figure.name, bareText, u"stay"_s, reply) * 1000;
    print(figure);
}

void measureLateChunks(Figure figure) {
    const QString head = sampleMarkdownTokens(100'000).join(QString());
    const QList<QString> reply = sampleMarkdownTokens(head.size()).first(tokensOfReply);
    figure.value = secondsOfToken(figure.name, program, u"send=1"_s, reply, head) * 1000;
    figure.peer = secondsOfToken(figure.name, program, u"send=1"_s, reply) * 1000;
    print(figure);
}

/// With the real engine ready and an empty chat in the window, beside a text field that nobody types into.
void measureIdle(Figure figure) {
    constexpr auto watched = 60s;
    WatchedProgram bare(bareText, u"stay"_s);
    bare.secondsToPaint();
    WatchedProgram ours(program, u"ready"_s);
    ours.waitFor("ready");
    pass(5s);
    const double before = ours.processorSeconds();
    const double bareBefore = bare.processorSeconds();
    pass(watched);
    figure.value = ours.processorSeconds() - before;
    figure.peer = bare.processorSeconds() - bareBefore;
    print(figure);
}

struct Job {
    Figure figure;
    std::function<void(Figure)> measure;
};

const std::vector<Job> &jobs() {
    static const std::vector<Job> all{
        {{.name = "start to painted window, catalog at hand (peer: bare Qt window)",
          .unit = "ms",
          .budget = {.mostRatio = 2.5}},
         measureStartAnswered},
        {{.name = "start to painted window, catalog refused (peer: bare Qt window)",
          .unit = "ms",
          .budget = {.mostRatio = 2.5}},
         measureStartRefused},
        {{.name = "start to painted window, catalog silent (peer: bare Qt window)",
          .unit = "ms",
          .budget = {.mostRatio = 2.5}},
         measureStartSilent},
        {{.name = "memory with 200 messages (peer: bare Qt window)",
          .unit = "MB",
          .budget = {.mostAbovePeer = 60}},
         measureMemory},
        {{.name = "processor time a chunk, at 200 a second (peer: bare text field)",
          .unit = "ms",
          .budget = {.most = 0.5}},
         measureChunks},
        {{.name = "processor time a chunk behind a reply of 100 KB (peer: behind none)",
          .unit = "ms",
          .budget = {.most = 0.5, .mostRatio = 2}},
         measureLateChunks},
        {{.name = "idle: processor time in a minute (peer: bare text field)",
          .unit = "s",
          .budget = {.most = 0.1}},
         measureIdle},
    };
    return all;
}

/// Measures in a new application folder, as somebody who has the demo model.
bool run(const Job &job) {
    const TemporaryApplicationFolder folder;
    installDemoModel();
    try {
        job.measure(job.figure);
        return true;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s: %s\n", job.figure.name.c_str(), error.what());
        return false;
    }
}

} // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    const std::string filter = argc > 1 ? argv[1] : "";
    bool isWhole = true;
    for (const Job &job : jobs()) {
        if (isWanted(job.figure.name, filter))
            isWhole = run(job) && isWhole;
    }
    return isWhole ? 0 : 1;
}
