#include "browser/Offspring.h"
#include "browser/WatchedBrowser.h"
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

// The whole program beside a chat page in a browser: each in a window of the same size on the present
// display, one after the other, with the same engine outside of both.
//
//   bench_browser <the component's script>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int rounds = 5;
constexpr int tokens = 2000;
constexpr auto interval = 5ms;
/// What belongs to the start is over by the end of it, and it isn't part of the reply.
constexpr auto silence = 4s;

struct Needed {
    double start;        ///< seconds from the start to the question's arrival at the engine
    double processor;    ///< seconds, from the reply's first token until all of it is shown
    double resident;     ///< bytes, with the whole reply in the window
    double proportional; ///< likewise
};

/// One of the two sides.
struct Side {
    std::string name;
    std::function<std::shared_ptr<void>(const QString &engine)> start; ///< ends with what it gives
    std::function<qsizetype()> shownLength;                            ///< of the last reply
};

void waitUntil(const std::function<bool()> &condition, const std::string &what) {
    for (int tries = 0; !condition(); ++tries) {
        if (tries > 60'000)
            throw std::runtime_error("waited too long for " + what);
        std::this_thread::sleep_for(1ms);
    }
}

double secondsSince(std::chrono::steady_clock::time_point moment) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - moment).count();
}

double processorSecondsSince(const std::map<pid_t, double> &before) {
    double sum = 0;
    for (const auto &[process, seconds] : offspringProcessorSeconds())
        sum += seconds - (before.contains(process) ? before.at(process) : 0);
    return sum;
}

void tellIfBusy(const std::string &name, const PacedEngine &engine) {
    const double seconds = std::chrono::duration<double>(engine.duration()).count();
    if (seconds > std::chrono::duration<double>(tokens * interval).count() * 1.05)
        std::fprintf(stderr, "%s: the machine was too busy, only %.0f tokens came in a second\n",
                     name.c_str(), tokens / seconds);
}

Needed watch(const Side &side, const QList<QString> &reply) {
    Needed needed{};
    PacedEngine engine(reply, interval, silence);
    const auto start = std::chrono::steady_clock::now();
    const std::shared_ptr<void> running = side.start(engine.url());
    waitUntil([&] { return engine.asked() > 0; }, side.name + "'s question");
    needed.start = secondsSince(start);
    waitUntil([&] { return engine.begun() > 0; }, "the reply");
    const std::map<pid_t, double> before = offspringProcessorSeconds();
    const qsizetype length = reply.join(QString()).trimmed().size();
    waitUntil([&] { return engine.sent() > 0 && side.shownLength() == length; },
              side.name + " with the whole reply");
    std::this_thread::sleep_for(500ms);
    needed.processor = processorSecondsSince(before);
    const OffspringMemory memory = offspringMemory();
    needed.resident = memory.resident;
    needed.proportional = memory.proportional;
    tellIfBusy(side.name, engine);
    return needed;
}

qsizetype savedLength() {
    for (const ConversationSummary &row : ChatStore().list()) {
        const std::optional<Conversation> chat = ChatStore().load(row.id);
        if (chat && chat->messages.size() == 2)
            return chat->messages.last().content.trimmed().size();
    }
    return 0;
}

Side theProgram() {
    const auto start = [](const QString &engine) -> std::shared_ptr<void> {
        const ChatStore store{};
        for (const ConversationSummary &row : store.list())
            store.remove(row.id);
        // Whoever asks for an index that isn't there writes one, and the program is to be the only writer.
        store.writeIndex({});
        const QString bus = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
        return std::make_shared<WatchedProgram>(
            QStringLiteral(PROGRAM_PATH), u"send=1"_s,
            QList<std::pair<QString, QString>>{{u"QT_QPA_PLATFORM"_s, u"xcb"_s},
                                               {u"DBUS_SESSION_BUS_ADDRESS"_s, bus},
                                               {u"OSTRELIN_ENGINE_URL"_s, engine}});
    };
    return {"the program", start, savedLength};
}

QByteArray contents(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("there is no " + path.toStdString());
    return file.readAll();
}

/// Serves the page with the component, and hears what the page tells.
class PageServer {
public:
    explicit PageServer(const QString &component) {
        const QByteArray page = contents(QStringLiteral(PAGE_PATH));
        m_server.answerEach([page, script = contents(component)](const ScriptedEngine::Request &request) {
            if (request.line.startsWith("GET /page.html"))
                return Script::plain().header("Content-Type", "text/html").raw(page);
            if (request.line.startsWith("GET /deepChat.bundle.js"))
                return Script::plain().header("Content-Type", "text/javascript").raw(script);
            return Script::plain(204);
        });
    }

    QString page(const QString &options) const {
        return m_server.url().toString() + u"/page.html?"_s + options;
    }

    /// How long a reply the page says that it shows.
    qsizetype shownLength() const {
        const QByteArray line = m_server.requests().constLast().line;
        return line.startsWith("GET /shown?") ? line.mid(11).split(' ').first().toLongLong() : 0;
    }

private:
    ScriptedEngine m_server;
};

/// The page with these options beside the engine.
Side thePage(const PageServer &server, const QString &profile, const QString &options) {
    const auto start = [&server, profile, options](const QString &engine) -> std::shared_ptr<void> {
        return std::make_shared<WatchedBrowser>(server.page(u"engine="_s + engine + options), profile);
    };
    return {"the page", start, [&server] { return server.shownLength(); }};
}

using Part = double Needed::*;

void printPart(const std::string &name, const std::string &unit, double unitSize, Part part,
               const std::vector<Needed> &ours, const std::vector<Needed> &theirs) {
    const auto middle = [&](const std::vector<Needed> &all) {
        std::vector<double> values;
        for (const Needed &needed : all)
            values.push_back(needed.*part / unitSize);
        return median(values);
    };
    print({.name = name + " (peer: chat page)", .value = middle(ours), .unit = unit, .peer = middle(theirs)});
}

struct Both {
    std::vector<Needed> ours;
    std::vector<Needed> theirs;
};

Both watchBoth(const Side &ours, const Side &theirs, const QList<QString> &reply) {
    Both both;
    for (int round = 0; round < rounds; ++round) {
        both.theirs.push_back(watch(theirs, reply));
        both.ours.push_back(watch(ours, reply));
    }
    return both;
}

void measure(const QString &component) {
    const TemporaryApplicationFolder folder;
    const QTemporaryDir profile;
    installDemoModel();
    const PageServer server(component);
    const Side ours = theProgram();
    // Each text is rendered in the cheapest way in which it comes out right.
    const Side pageOfProse = thePage(server, profile.path(), u"&partial"_s);
    const Side pageOfBlocks = thePage(server, profile.path(), {});

    // The first start of each brings the files into memory, and makes the browser's profile.
    const QList<QString> word{u"Yes."_s};
    watch(pageOfProse, word);
    watch(ours, word);

    const Both prose = watchBoth(ours, pageOfProse, sampleTokens(10 * tokens).first(tokens));
    constexpr double megabyte = 1e6;
    printPart("start to the first question sent", "s", 1, &Needed::start, prose.ours, prose.theirs);
    printPart("memory, proportional share", "MB", megabyte, &Needed::proportional, prose.ours, prose.theirs);
    printPart("memory, resident", "MB", megabyte, &Needed::resident, prose.ours, prose.theirs);
    printPart("processor time, 2,000 tokens of prose", "s", 1, &Needed::processor, prose.ours, prose.theirs);

    const Both blocks = watchBoth(ours, pageOfBlocks, sampleMarkdownTokens(10 * tokens).first(tokens));
    printPart("processor time, 2,000 tokens of lists, tables and code", "s", 1, &Needed::processor,
              blocks.ours, blocks.theirs);
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    if (argc != 2)
        return 1;
    // Nobody reads either window aloud.
    qunsetenv("QT_ACCESSIBILITY");
    qunsetenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON");
    adoptOrphans();
    try {
        measure(QString::fromLocal8Bit(argv[1]));
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "browser: %s\n", error.what());
        return 1;
    }
}
