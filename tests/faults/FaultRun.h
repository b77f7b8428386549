#pragma once

#include "faults/Dice.h"
#include "faults/PatientProgram.h"

#include <QElapsedTimer>
#include <QMap>

/// A run of steps, each of which does something to the program that may happen to it, and sees that it
/// stands it. Which steps, and how, the seed decides; each is printed before it begins.
class FaultRun {
public:
    FaultRun(const QString &executable, quint32 seed);

    /// Does steps until that many minutes are over; throws Finding.
    void run(double minutes);

    /// How many steps of each kind there were, and how many starts.
    void printSummary() const;

private:
    struct Step {
        const char *name;
        int weight; ///< how often, against the others
        void (FaultRun::*act)();
    };
    static const QList<Step> steps;

    void begin();
    void perform(const Step &step);
    const Step &chosenStep();
    void note(const QString &text) const;
    bool pressIfShown(const QString &button);
    QString someTitle();
    void startAgain();
    void setToWork();
    void press();
    QString someFile();
    void damageSomeFile();

    void send();
    void askAndWait();
    void stopReply();
    void newChat();
    void switchChat();
    void deleteChat();
    void regenerate();
    void toggleSetting();
    void killEngine();
    void tryAgain();
    void killProgram();
    void killDuringStart();
    void endProgram();
    void startSecond();
    void fillDisk();
    void freeDisk();
    void freezeEngine();
    void cutNetwork();
    void startOnProtectedDisk();
    void startWithoutFolder();
    void interruptDownload();
    void damageWhileClosed();
    void damageWhileOpen();
    void bringToOrder();

    const QString m_executable;
    PatientProgram m_patient;
    PatientProgram::Replies m_replies = PatientProgram::Replies::end;
    const quint32 m_seed;
    quint32 m_number = 0;
    Dice m_dice;
    QElapsedTimer m_timer;
    QMap<QString, int> m_counts;
};
