#include "faults/FaultRun.h"

#include <algorithm>
#include <cstdio>
#include <numeric>

using namespace Qt::StringLiterals;

const QList<FaultRun::Step> FaultRun::steps{
    {"send a question", 10, &FaultRun::send},
    {"ask and wait for the whole reply", 4, &FaultRun::askAndWait},
    {"stop the reply", 5, &FaultRun::stopReply},
    {"new chat", 4, &FaultRun::newChat},
    {"switch the chat", 5, &FaultRun::switchChat},
    {"delete a chat", 3, &FaultRun::deleteChat},
    {"ask again", 4, &FaultRun::regenerate},
    {"change a setting", 4, &FaultRun::toggleSetting},
    {"kill the engine", 4, &FaultRun::killEngine},
    {"try again", 4, &FaultRun::tryAgain},
    {"kill the program", 5, &FaultRun::killProgram},
    {"kill the program while it starts", 2, &FaultRun::killDuringStart},
    {"end the program", 4, &FaultRun::endProgram},
    {"start a second program", 2, &FaultRun::startSecond},
    {"fill the disk", 4, &FaultRun::fillDisk},
    {"free the disk", 4, &FaultRun::freeDisk},
    {"freeze the engine for a while", 3, &FaultRun::freezeEngine},
    {"cut the network for a while", 2, &FaultRun::cutNetwork},
    {"start on a disk that can't be written", 1, &FaultRun::startOnProtectedDisk},
    {"start without a folder", 2, &FaultRun::startWithoutFolder},
    {"interrupt the download of the model", 2, &FaultRun::interruptDownload},
    {"damage a file of the closed program", 5, &FaultRun::damageWhileClosed},
    {"damage a file of the open program", 3, &FaultRun::damageWhileOpen},
    {"bring all to order", 3, &FaultRun::bringToOrder},
};

FaultRun::FaultRun(const QString &executable, quint32 seed)
    : m_executable(executable),
      m_patient(executable),
      m_seed(seed),
      m_dice(seed, 0) {}

void FaultRun::run(double minutes) {
    m_timer.start();
    begin();
    while (double(m_timer.elapsed()) < minutes * 60'000) {
        m_dice = Dice(m_seed, ++m_number);
        perform(chosenStep());
    }
    m_patient.bringToOrder();
    m_patient.end([this] { m_patient.program().closeWindow(); });
}

void FaultRun::begin() {
    m_patient.start(m_replies);
    m_patient.bringToOrder();
}

void FaultRun::perform(const Step &step) {
    std::printf("%7.1f s  %4u  %s\n", double(m_timer.elapsed()) / 1000, m_number, step.name);
    std::fflush(stdout);
    ++m_counts[QString::fromLatin1(step.name)];
    (this->*step.act)();
    m_patient.check();
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
    std::printf("%u steps and %d starts in %.1f minutes:\n", m_number, m_patient.starts(),
                double(m_timer.elapsed()) / 60'000);
    for (auto count = m_counts.cbegin(); count != m_counts.cend(); ++count)
        std::printf("  %4d  %s\n", *count, qPrintable(count.key()));
}
