#pragma once

#include "e2e/RunningProgram.h"
#include "faults/KeptFiles.h"
#include "faults/SmallDisk.h"
#include "support/EnvironmentVariable.h"
#include "support/FileServer.h"

#include <functional>

/// The whole program with the real engine and the demo model, on a disk of its own, and what it has to stand:
/// whatever is done to it here, it goes on, and its files are whole. Each function throws Finding where the
/// program does what it never should.
class PatientProgram {
public:
    enum class Replies { end, neverEnd };

    explicit PatientProgram(const QString &executable);
    ~PatientProgram();

    RunningProgram &program() { return m_program; }
    AccessibleWindow &window() { return m_program.window(); }
    SmallDisk &disk() { return m_disk; }
    KeptFiles &files() { return m_files; }
    int starts() const { return m_starts; }

    /// Makes one file of each kind that a person may have. Before the first start.
    void prepareFiles();

    /// Starts it, and waits for its window. Long replies are for being disturbed.
    void start(Replies replies);

    /// Waits until the window answers for the first time.
    void waitUntilItAnswers();

    /// The same, and then until it shows a chat, the welcome or a failure that can be tried again.
    void waitUntilSettled();

    /// Asks the window all the while for so long, and then looks as check() does.
    void watch(int milliseconds);

    /// Kills it, and sees that its engine goes too.
    void kill();

    /// Ends it by `ask`, and sees that it ends in order and takes its engine along.
    void end(const std::function<void()> &ask);

    /// Freezes the engine, and lets it go on. False if there is none.
    bool freezeEngine();
    void thawEngine();

    /// Everything that a person would do for a chat that takes questions: makes room, lets the engine go on,
    /// presses what the window offers, and waits for the chat.
    void bringToOrder();

    /// Looks at all that has to be true at every moment.
    void check();

    /// The buttons that show.
    QStringList buttons();

    /// Waits for the condition, which may ask the window; false if it doesn't come true in that time.
    static bool waitFor(const std::function<bool()> &condition, int milliseconds);

    /// The model's file, and the one that is downloaded to.
    static QString modelFile();
    static QString partialFile();

private:
    bool isInOrder();
    void pressOn();
    void repairModel();
    void expectNoEngine();
    void requireNoHang();
    QString lastWords();

    const QByteArray m_model;
    FileServer m_server;
    ScriptedEngine m_catalog;
    SmallDisk m_disk;
    EnvironmentVariable m_dataHome;
    EnvironmentVariable m_catalogURL;
    EnvironmentVariable m_tier{"OSTRELIN_TIER", "sprout"};
    EnvironmentVariable m_versionURL{"OSTRELIN_VERSIONURL", "http://127.0.0.1:9/version.json"};
    KeptFiles m_files;
    RunningProgram m_program;
    QList<qint64> m_frozen;
    int m_starts = 0;
};
