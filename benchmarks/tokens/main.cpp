#include "client/LineReader.h"
#include "client/StreamChunk.h"
#include "figures/Figure.h"
#include "screens/HouseStyle.h"
#include "support/ScriptedEngine.h"
#include "tokens/BareClient.h"
#include "tokens/Duty.h"
#include "tokens/EndlessEngine.h"
#include "tokens/RunningProgram.h"

#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

// Replies of the real engine. Tokens a second of one long reply: through the program, from the question to
// the whole reply, against a bare client that sends the same request and reads the same reply. And what the
// engine does at each speed of the reply.

using namespace Qt::StringLiterals;

namespace {

constexpr char hiddenName[] = "tokens, window hidden (peer: bare socket)";
constexpr char visibleName[] = "tokens, window visible (peer: bare socket)";
constexpr int contextLength = 1536;
constexpr size_t fewestRounds = 5;
constexpr qint64 enoughMilliseconds = 90'000;

const QString question = u"Tell me about your garden."_s;

InstalledModel greedyModel() {
    const Sampling greedy{.temperature = 0, .topP = 1, .topK = 1, .minP = 0, .presencePenalty = 0};
    return {.tierId = u"greedy"_s,
            .displayName = u"Greedy"_s,
            .filename = u"greedy.gguf"_s,
            .contextLength = contextLength,
            .sampling = greedy,
            .thinkingSampling = greedy,
            .supportsTools = false,
            .license = u"MIT"_s,
            .sizeBytes = 0};
}

/// The request that the program sends for the question.
ScriptedEngine::Request requestOf(RunningProgram &program) {
    ScriptedEngine engine;
    engine.answer(Script::reply({u"Yes."_s}));
    program.use(engine.url(), u"key"_s);
    program.secondsOfReply(question);
    return engine.requests().constFirst();
}

struct BareReply {
    double seconds = 0;
    int tokens = 0;
    QString text;
};

BareReply bareReply(const EndlessEngine &engine, const ScriptedEngine::Request &request) {
    const QByteArray path = request.line.split(' ').at(1);
    QElapsedTimer timer;
    timer.start();
    const QByteArray bytes = BareClient(engine.port()).post(path, engine.key().toLatin1(), request.body);
    BareReply result{.seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9, .tokens = 0, .text = {}};
    LineReader lines;
    lines.feed(bytes);
    while (const auto line = lines.next()) {
        const std::optional<StreamChunk> chunk = parseStreamLine(*line);
        if (!chunk || (chunk->content.isEmpty() && chunk->reasoning.isEmpty()))
            continue;
        ++result.tokens;
        result.text += chunk->content;
    }
    return result;
}

/// What the two replies of each kind took together, in seconds.
struct Round {
    double bare = 0;
    double hidden = 0;
    double visible = 0;
};

/// Each kind as early as late, so that an engine or a machine that gets slower or faster meets all alike.
Round mirroredRound(RunningProgram &program, const EndlessEngine &engine,
                    const ScriptedEngine::Request &request) {
    Round round;
    const auto askBare = [&] { round.bare += bareReply(engine, request).seconds; };
    const auto askHidden = [&] {
        program.setVisible(false);
        round.hidden += program.secondsOfReply(question);
    };
    const auto askVisible = [&] {
        program.setVisible(true);
        round.visible += program.secondsOfReply(question);
    };
    askBare();
    askHidden();
    askVisible();
    askVisible();
    askHidden();
    askBare();
    return round;
}

/// Prints the round whose ratio is the median, and how far apart the ratios of all of them lie.
void printMedian(const char *name, std::vector<Round> rounds, double tokens, double Round::*kind) {
    const auto ratio = [&](const Round &round) { return round.bare / round.*kind; };
    std::ranges::sort(rounds, {}, ratio);
    const Round &median = rounds.at(rounds.size() / 2);
    print({name, tokens / median.*kind, "tokens/s", tokens / median.bare, {.leastRatio = 0.97}});
    std::fprintf(stderr, "%s: %.3f to %.3f x in %zu rounds\n", name, ratio(rounds.front()),
                 ratio(rounds.back()), rounds.size());
}

void measureTokens(const EndlessEngine &engine, const std::string &filter) {
    if (!isWanted(hiddenName, filter) && !isWanted(visibleName, filter))
        return;
    RunningProgram program(greedyModel());
    const ScriptedEngine::Request request = requestOf(program);
    program.use(engine.url(), engine.key());

    // The first replies warm the engine up, and show that both sides get the same.
    const BareReply first = bareReply(engine, request);
    program.secondsOfReply(question);
    if (first.tokens < contextLength / 2 || program.reply() != first.text)
        throw std::runtime_error("the two replies differ, so nothing can be compared");

    std::vector<Round> rounds;
    QElapsedTimer whole;
    whole.start();
    // Of an odd number one stands in the middle.
    while (rounds.size() < fewestRounds || rounds.size() % 2 == 0 || whole.elapsed() < enoughMilliseconds)
        rounds.push_back(mirroredRound(program, engine, request));
    const double tokens = 2.0 * first.tokens;
    if (isWanted(hiddenName, filter))
        printMedian(hiddenName, rounds, tokens, &Round::hidden);
    if (isWanted(visibleName, filter))
        printMedian(visibleName, rounds, tokens, &Round::visible);
}

} // namespace

int main(int argc, char **argv) {
    const std::string filter = argc > 1 ? argv[1] : "";
    if (!isWanted(hiddenName, filter) && !isWanted(visibleName, filter) && !isDutyWanted(filter))
        return 0;
    QApplication::setStyle(new HouseStyle);
    QApplication application(argc, argv);
    try {
        const EndlessEngine engine(QStringLiteral(ENGINE_PATH), QStringLiteral(DEMO_MODEL), contextLength);
        measureTokens(engine, filter);
        measureDuty(engine, filter);
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "tokens: %s\n", error.what());
        return 1;
    }
}
