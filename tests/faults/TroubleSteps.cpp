/// The steps of a run that are troubles: what ends, damages or holds up the program, its engine or its disk.

#include "faults/Damage.h"
#include "faults/FaultRun.h"
#include "faults/Finding.h"
#include "faults/Loopback.h"
#include "records/Folders.h"

#include <QDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

bool FaultRun::killEngine() {
    const qint64 engine = m_patient.program().enginePid();
    if (engine <= 0) {
        note(u"there is no engine"_s);
        return false;
    }
    ::kill(static_cast<pid_t>(engine), SIGKILL);
    m_patient.watch(m_dice.upTo(1000));
    return true;
}

/// A failure that can be tried again.
bool FaultRun::breakEngine() {
    constexpr int promptly = 5000;
    bringToOrder();
    killEngine();
    return PatientProgram::waitFor([this] { return m_patient.buttons().contains(u"Try again"_s); }, promptly);
}

bool FaultRun::tryAgain() {
    return pressIfShown(u"Try again"_s);
}

void FaultRun::startAgain() {
    startAgainWith(m_dice.oneIn(2) ? PatientProgram::Replies::neverEnd : PatientProgram::Replies::end);
}

void FaultRun::startAgainWith(PatientProgram::Replies replies) {
    m_replies = replies;
    m_patient.start(m_replies);
    m_patient.waitUntilSettled();
}

bool FaultRun::killProgram() {
    setToWork();
    m_patient.kill();
    startAgain();
    return true;
}

bool FaultRun::killDuringStart() {
    constexpr int longestStart = 2000;
    m_patient.kill();
    for (int times = m_dice.upTo(2); times >= 0; --times) {
        m_patient.start(PatientProgram::Replies::end);
        QTest::qWait(m_dice.upTo(longestStart));
        m_patient.kill();
    }
    startAgain();
    return true;
}

bool FaultRun::endProgram() {
    if (m_dice.oneIn(3)) {
        note(u"with a frozen engine"_s);
        m_patient.freezeEngine();
    }
    setToWork();
    const int way = m_dice.pick(QList{SIGTERM, SIGINT, 0});
    m_patient.end([&] {
        if (way == 0)
            m_patient.program().closeWindow();
        else
            m_patient.program().signal(way);
    });
    startAgain();
    return true;
}

bool FaultRun::startSecond() {
    RunningProgram second(m_executable);
    require(second.start(), u"the second program can't be started"_s);
    require(second.waitForEnd() && second.endedOrderly(), u"the second program didn't end in order"_s);
    return true;
}

bool FaultRun::fillDisk() {
    m_patient.disk().fill(m_dice.pick(QList<qint64>{0, 0, 4096, 16'384, 65'536}));
    return m_patient.disk().isFull();
}

bool FaultRun::freeDisk() {
    m_patient.disk().free();
    return true;
}

bool FaultRun::freezeEngine() {
    constexpr int longest = 4000;
    const bool isFrozen = m_patient.freezeEngine();
    setToWork();
    m_patient.watch(m_dice.upTo(longest));
    m_patient.thawEngine();
    return isFrozen;
}

bool FaultRun::cutNetwork() {
    constexpr int longest = 3000;
    takeLoopbackDown();
    setToWork();
    m_patient.watch(m_dice.upTo(longest));
    bringLoopbackUp();
    return true;
}

bool FaultRun::startOnProtectedDisk() {
    m_patient.kill();
    m_patient.disk().protect();
    startAgain();
    setToWork();
    m_patient.check();
    m_patient.kill();
    m_patient.disk().unprotect();
    startAgain();
    return true;
}

bool FaultRun::startWithoutFolder() {
    m_patient.kill();
    const QString folder =
        m_dice.pick(QStringList{applicationFolder(), chatsFolder(), modelsFolder(), pagesFolder()});
    const QString aside = m_patient.disk().path() + u"/aside"_s;
    m_patient.disk().free();
    QFile::rename(folder, aside);
    if (m_dice.oneIn(2))
        QFile(folder).open(QIODevice::WriteOnly);
    note(QFileInfo(folder).fileName());
    m_patient.files().lookAway([this] {
        startAgain();
        setToWork();
        m_patient.check();
        m_patient.kill();
    });
    QDir(folder).removeRecursively();
    QFile::remove(folder);
    QFile::rename(aside, folder);
    startAgain();
    return true;
}

void FaultRun::removeModel() {
    m_patient.kill();
    m_patient.disk().free();
    QFile::remove(PatientProgram::modelFile());
}

/// Starts the program and kills it while it downloads; false if it wasn't so far yet, or was through.
bool FaultRun::killInDownload() {
    constexpr int patience = 2000;
    constexpr int longest = 1500;
    const auto isInMidst = [] { return QFile::exists(PatientProgram::partialFile()); };
    m_patient.start(PatientProgram::Replies::end);
    m_patient.waitUntilItAnswers();
    PatientProgram::waitFor(isInMidst, patience);
    m_patient.watch(m_dice.upTo(longest));
    m_patient.kill();
    return isInMidst();
}

bool FaultRun::interruptDownload() {
    removeModel();
    bool isInterrupted = false;
    for (int times = m_dice.upTo(2); times >= 0; --times)
        isInterrupted |= killInDownload();
    startAgain();
    return isInterrupted;
}

bool FaultRun::damageDownload() {
    removeModel();
    const bool isInterrupted = killInDownload();
    if (isInterrupted)
        damageFile(PatientProgram::partialFile());
    startAgain();
    return isInterrupted;
}

QString FaultRun::someFile() {
    QStringList files{settingsFile(),
                      chatIndexFile(),
                      memoryFile(),
                      schedulesFile(),
                      enginePidFile(),
                      PatientProgram::modelFile(),
                      PatientProgram::partialFile(),
                      m_patient.program().configurationFolder() + u"/Ostrelin/windows.ini"_s};
    // Chats are the most, and the most is in them.
    for (int more = 0; more < 4; ++more) {
        for (const QString &folder : {chatsFolder(), pagesFolder()}) {
            const QFileInfoList entries = QDir(folder).entryInfoList({u"*-*.json"_s}, QDir::Files);
            if (!entries.isEmpty())
                files.append(m_dice.pick(entries).filePath());
        }
    }
    return m_dice.pick(files);
}

void FaultRun::damageFile(const QString &path) {
    const QString damaged = damage(path, m_dice);
    note(QFileInfo(path).fileName() + u": "_s + damaged);
    m_patient.files().excuse(path);
}

bool FaultRun::damageWhileClosed() {
    if (m_dice.oneIn(2))
        m_patient.kill();
    else
        m_patient.end([this] { m_patient.program().signal(SIGTERM); });
    for (int more = m_dice.upTo(2); more >= 0; --more)
        damageFile(someFile());
    startAgain();
    return true;
}

bool FaultRun::damageWhileOpen() {
    damageFile(someFile());
    setToWork();
    return true;
}

bool FaultRun::bringToOrder() {
    m_patient.bringToOrder();
    return true;
}
