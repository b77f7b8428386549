#include "faults/FaultRun.h"

#include "faults/Finding.h"

#include <algorithm>
#include <cstdio>
#include <numeric>

using namespace Qt::StringLiterals;

const QList<FaultRun::Step> FaultRun::steps{
    {"send a question", 10, &FaultRun::send, &FaultRun::bringToOrder},
    {"ask and wait for the whole reply", 4, &FaultRun::askAndWait},
    {"stop the reply", 5, &FaultRun::stopReply, &FaultRun::startReply},
    {"new chat", 4, &FaultRun::newChat, &FaultRun::bringToOrder},
    {"switch the chat", 5, &FaultRun::switchChat, &FaultRun::bringToOrder},
    {"delete a chat", 3, &FaultRun::deleteChat, &FaultRun::bringToOrder},
    {"ask again", 4, &FaultRun::regenerate, &FaultRun::startReply},
    {"change a setting", 4, &FaultRun::toggleSetting, &FaultRun::bringToOrder},
    {"kill the engine", 4, &FaultRun::killEngine, &FaultRun::bringToOrder},
    {"try again", 4, &FaultRun::tryAgain, &FaultRun::breakEngine},
    {"kill the program", 5, &FaultRun::killProgram},
    {"kill the program while it starts", 2, &FaultRun::killDuringStart},
    {"end the program", 4, &FaultRun::endProgram},
    {"start a second program", 2, &FaultRun::startSecond},
    {"fill the disk", 4, &FaultRun::fillDisk},
    {"free the disk", 4, &FaultRun::freeDisk},
    {"freeze the engine for a while", 3, &FaultRun::freezeEngine, &FaultRun::bringToOrder},
    {"cut the network for a while", 2, &FaultRun::cutNetwork},
    {"start on a disk that can't be written", 1, &FaultRun::startOnProtectedDisk},
    {"start without a folder", 2, &FaultRun::startWithoutFolder},
    {"interrupt the download of the model", 2, &FaultRun::interruptDownload, &FaultRun::bringToOrder},
    {"damage half a download of the model", 2, &FaultRun::damageDownload, &FaultRun::bringToOrder},
    {"damage a file of the closed program", 5, &FaultRun::damageWhileClosed},
    {"damage a file of the open program", 3, &FaultRun::damageWhileOpen},
    {"bring all to order", 3, &FaultRun::bringToOrder},
};

FaultRun::FaultRun(const QString &executable, quint32 seed)
    : m_executable(executable),
      m_patient(executable),
      m_seed(seed),
      m_dice(seed, 0) {}

void FaultRun::runFor(double minutes) {
    run([&] { return !m_lap.isEmpty() || double(m_timer.elapsed()) < minutes * 60'000; });
}

void FaultRun::runSteps(quint32 count) {
    run([&] { return m_number < count; });
}

void FaultRun::run(const std::function<bool()> &goesOn) {
    m_timer.start();
    begin();
    while (goesOn()) {
        m_dice = Dice(m_seed, ++m_number);
        if (m_lap.isEmpty())
            perform(chosenStep());
        else
            goOnWithTheLap();
    }
    m_patient.bringToOrder();
    m_patient.end([this] { m_patient.program().closeWindow(); });
}

void FaultRun::begin() {
    m_lap = m_dice.shuffled(steps);
    m_patient.prepareFiles();
    m_patient.start(m_replies);
    m_patient.waitUntilSettled();
    m_patient.bringToOrder();
}

void FaultRun::goOnWithTheLap() {
    constexpr int mostTries = 5;
    const Step step = m_lap.first();
    if (step.prepare)
        (this->*step.prepare)();
    if (perform(step)) {
        m_lap.removeFirst();
        m_tries = 0;
        return;
    }
    require(++m_tries < mostTries, u"\"%1\" never has an effect"_s.arg(QString::fromLatin1(step.name)));
}

bool FaultRun::perform(const Step &step) {
    std::printf("%7.1f s  %4u  %s\n", double(m_timer.elapsed()) / 1000, m_number, step.name);
    std::fflush(stdout);
    Count &count = m_counts[QString::fromLatin1(step.name)];
    ++count.all;
    const bool hasEffect = (this->*step.act)();
    count.effects += hasEffect ? 1 : 0;
    m_patient.check();
    return hasEffect;
}

const FaultRun::Step &FaultRun::chosenStep() {
    const int all = std::accumulate(steps.begin(), steps.end(), 0,
                                    [](int sum, const Step &step) { return sum + step.weight; });
    int place = m_dice.upTo(all - 1);
    return *std::find_if(steps.begin(), steps.end(),
                         [&](const Step &step) { return (place -= step.weight) < 0; });
}

void FaultRun::note(const QString &text) const {
    std::printf("                   %s\n", qPrintable(text));
    std::fflush(stdout);
}

void FaultRun::printSummary() const {
    std::printf(
        "%u steps and %d starts in %.1f minutes; of each kind how many, and how many had an effect:\n",
        m_number, m_patient.starts(), double(m_timer.elapsed()) / 60'000);
    for (auto count = m_counts.cbegin(); count != m_counts.cend(); ++count)
        std::printf("  %4d  %4d  %s\n", count->all, count->effects, qPrintable(count.key()));
}
