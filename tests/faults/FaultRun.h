#pragma once

#include "faults/Dice.h"
#include "faults/PatientProgram.h"

#include <QElapsedTimer>
#include <QMap>

#include <functional>

/// A run of steps, each of which does something to the program that may happen to it, and sees that it
/// stands it. First comes a lap through all of them, and each has to have an effect there; then any. Which
/// steps, and how, the seed decides; each is printed before it begins.
class FaultRun {
public:
    FaultRun(const QString &executable, quint32 seed);

    /// Does steps until the lap and that many minutes are over, or just so many steps; throws Finding.
    void runFor(double minutes);
    void runSteps(quint32 count);

    /// How many steps there have been.
    quint32 number() const { return m_number; }

    /// How many steps of each kind there were, how many of them had an effect, and how many starts.
    void printSummary() const;

private:
    using Act = bool (FaultRun::*)();
    struct Step {
        const char *name;
        int weight;            ///< how often, against the others
        Act act;               ///< false if there was nothing to do
        Act prepare = nullptr; ///< sees that there is, on the lap
    };
    struct Count {
        int all = 0;
        int effects = 0;
    };
    static const QList<Step> steps;

    void run(const std::function<bool()> &goesOn);
    void begin();
    void goOnWithTheLap();
    bool perform(const Step &step);
    const Step &chosenStep();
    void note(const QString &text) const;
    bool startReply();
    bool breakEngine();
    bool pressIfShown(const QString &button);
    QString question() const;
    QString someTitle();
    void startAgain();
    void startAgainWith(PatientProgram::Replies replies);
    void setToWork();
    bool canSave();
    bool press();
    QString someFile();
    void removeModel();
    bool killInDownload();
    void damageFile(const QString &path);

    bool send();
    bool askAndWait();
    bool stopReply();
    bool newChat();
    bool switchChat();
    bool deleteChat();
    bool regenerate();
    bool toggleSetting();
    bool killEngine();
    bool tryAgain();
    bool killProgram();
    bool killDuringStart();
    bool endProgram();
    bool startSecond();
    bool fillDisk();
    bool freeDisk();
    bool freezeEngine();
    bool cutNetwork();
    bool startOnProtectedDisk();
    bool startWithoutFolder();
    bool interruptDownload();
    bool damageDownload();
    bool damageWhileClosed();
    bool damageWhileOpen();
    bool bringToOrder();

    const QString m_executable;
    PatientProgram m_patient;
    PatientProgram::Replies m_replies = PatientProgram::Replies::end;
    const quint32 m_seed;
    quint32 m_number = 0;
    Dice m_dice;
    QElapsedTimer m_timer;
    QMap<QString, Count> m_counts;
    QList<Step> m_lap; ///< what has had no effect yet
    int m_tries = 0;   ///< of the first of those
};
