#include "e2e/OwnDisplay.h"
#include "faults/FaultRun.h"
#include "faults/Finding.h"
#include "support/OwnNetwork.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRandomGenerator>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>

/// The program in trouble: what happens to it by chance, step after step, and what it has to stand. Prints
/// the seed and every step; the status is 1 after a finding or a failure of the run itself, and 77 where the
/// system doesn't allow a network and a disk of one's own.
///
///   ostrelin_faults [--seed N] [--minutes N | --steps N] [--program PATH]

using namespace Qt::StringLiterals;

namespace {

constexpr int foundSomething = 1;
constexpr int notAllowed = 77;

/// Nothing of what is cut here is anybody else's.
bool hasOwnNetwork() {
    constexpr const char *mark = "OSTRELIN_TEST_NETWORK";
    if (!std::getenv(mark))
        setenv(mark, enterOwnNetwork({}, "127.0.0.1 localhost\n") ? "1" : "0", 1);
    return qstrcmp(std::getenv(mark), "1") == 0;
}

void chooseEngine() {
    if (!qEnvironmentVariableIsSet("OSTRELIN_LLAMA_SERVER"))
        qputenv("OSTRELIN_LLAMA_SERVER", SERVER_PATH);
    // Several threads would wait for each other on a machine that is busy with something else.
    if (!qEnvironmentVariableIsSet("LLAMA_ARG_THREADS"))
        qputenv("LLAMA_ARG_THREADS", "1");
}

/// The status of the run, which is what `act` does with it.
int statusOf(FaultRun &run, quint32 seed, const std::function<void(FaultRun &)> &act) {
    try {
        act(run);
    } catch (const std::exception &error) {
        const bool isFinding = dynamic_cast<const Finding *>(&error) != nullptr;
        run.printSummary();
        std::printf("%s: %s\nThe same again: ostrelin_faults --seed %u --steps %u\n",
                    isFinding ? "FOUND" : "THE RUN ITSELF FAILED", error.what(), seed, run.number());
        return foundSomething;
    }
    run.printSummary();
    std::puts("Nothing was found.");
    return EXIT_SUCCESS;
}

int runOf(const QString &program, quint32 seed, const std::function<void(FaultRun &)> &act) {
    std::printf("seed %u\n", seed);
    std::optional<FaultRun> run;
    try {
        run.emplace(program, seed);
    } catch (const std::runtime_error &error) {
        std::printf("%s\n", error.what());
        return notAllowed;
    }
    return statusOf(*run, seed, act);
}

} // namespace

int main(int argc, char **argv) {
    if (!hasOwnNetwork()) {
        std::puts("The system doesn't let this process have a network of its own.");
        return notAllowed;
    }
    moveToOwnDisplay(argv);
    const QCoreApplication application(argc, argv);
    chooseEngine();
    QCommandLineParser parser;
    const QCommandLineOption seed(u"seed"_s, u"repeats the steps of an earlier run"_s, u"number"_s);
    const QCommandLineOption minutes(u"minutes"_s, u"how long"_s, u"number"_s, u"1"_s);
    const QCommandLineOption program(u"program"_s, u"the program"_s, u"path"_s, QStringLiteral(PROGRAM_PATH));
    const QCommandLineOption steps(u"steps"_s, u"how many steps, whatever the time"_s, u"number"_s);
    parser.addOptions({seed, minutes, steps, program});
    parser.process(application);
    const quint32 chosen =
        parser.isSet(seed) ? parser.value(seed).toUInt() : QRandomGenerator::global()->bounded(1'000'000u);
    return runOf(parser.value(program), chosen, [&](FaultRun &run) {
        if (parser.isSet(steps))
            run.runSteps(parser.value(steps).toUInt());
        else
            run.runFor(parser.value(minutes).toDouble());
    });
}
