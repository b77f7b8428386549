#include "faults/PatientProgram.h"

#include "e2e/EndlessEngine.h"
#include "e2e/ProcessStatus.h"
#include "e2e/TopLevelWindow.h"
#include "faults/Engines.h"
#include "faults/Finding.h"
#include "pages/PageStore.h"
#include "platform/AtomicFile.h"
#include "platform/Processes.h"
#include "records/Coder.h"
#include "records/Folders.h"
#include "records/Memory.h"
#include "schedules/ScheduleStore.h"
#include "support/DemoModel.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTest>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestHang = 5000;
constexpr int startTime = 30'000;

Catalog catalogOf(const QUrl &url) {
    ModelTier tier = demoTier(url);
    tier.requiredGPUBytes = 1;
    return {1, {tier}};
}

} // namespace

PatientProgram::PatientProgram(const QString &executable)
    : m_model(readFile(demoModelPath()).value()),
      m_server(m_model),
      m_dataHome("XDG_DATA_HOME", m_disk.path().toLocal8Bit()),
      m_catalogURL("OSTRELIN_CATALOGURL", m_catalog.url().toString().toLocal8Bit()),
      m_files(modelFile(), m_model),
      m_program(executable) {
    // Slow enough to be interrupted.
    m_server.setManner({.millisecondsBetweenPieces = 20});
    m_catalog.answer(Script(200).raw(encodeRecord(catalogOf(m_server.url()))));
}

PatientProgram::~PatientProgram() {
    // After a finding there may be more than one.
    for (const RunningEngine &engine : enginesOf(m_disk.path()))
        killProcess(engine.pid);
}

void PatientProgram::prepareFiles() {
    installDemoModel();
    // A copy that can be damaged, in the place of the link.
    QFile::remove(modelFile());
    writeAtomically(modelFile(), m_model);
    const QDateTime now = QDateTime::currentDateTimeUtc();
    savePage({.id = QUuid::createUuid(),
              .title = u"Plan"_s,
              .markdown = u"# Plan\n\nOne page."_s,
              .createdAt = now,
              .updatedAt = now});
    saveSchedules({{.id = QUuid::createUuid(), .title = u"Morning"_s, .prompt = u"What is good today?"_s}});
    writeMemory(u"- The garden faces south."_s);
}

QString PatientProgram::modelFile() {
    return modelsFolder() + u"/sprout.gguf"_s;
}

QString PatientProgram::partialFile() {
    return modelFile() + u".partial"_s;
}

void PatientProgram::start(Replies replies) {
    ++m_starts;
    if (replies == Replies::neverEnd) {
        const EndlessEngine endless;
        require(m_program.start(), u"the program can't be started"_s);
    } else {
        require(m_program.start(), u"the program can't be started"_s);
    }
    require(waitFor([this] { return topLevelWindow(m_program.pid()) != 0 || !isAlive(m_program.pid()); },
                    longestHang),
            u"no window within five seconds after a start"_s);
    require(isAlive(m_program.pid()), u"the program ended at its start: "_s + lastWords());
}

void PatientProgram::waitUntilItAnswers() {
    require(waitFor([this] { return window().answers() || !isAlive(m_program.pid()); }, longestHang),
            u"the window doesn't answer after a start"_s);
}

void PatientProgram::waitUntilSettled() {
    const QStringList ways{u"Send message"_s, u"Stop generating"_s, u"Get started"_s, u"Start"_s,
                           u"Try again"_s};
    waitUntilItAnswers();
    const auto isSettled = [&] {
        const QStringList shown = buttons();
        return std::any_of(ways.begin(), ways.end(), [&](const QString &way) { return shown.contains(way); });
    };
    require(waitFor([&] { return isSettled() || !isAlive(m_program.pid()); }, startTime),
            u"the start doesn't come to its end; the buttons are "_s + buttons().join(u", "_s));
    check();
}

void PatientProgram::watch(int milliseconds) {
    constexpr int pause = 250;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds && window().answers())
        QTest::qWait(pause);
    check();
}

void PatientProgram::kill() {
    requireNoHang();
    m_program.signal(SIGKILL);
    require(m_program.waitForEnd(), u"the program outlived SIGKILL"_s);
    expectNoEngine();
    m_files.checkAfterEnd();
}

void PatientProgram::end(const std::function<void()> &ask) {
    requireNoHang();
    ask();
    require(m_program.waitForEnd(longestHang), u"the program doesn't end within five seconds"_s);
    require(m_program.endedOrderly(), u"the program didn't end in order: "_s + lastWords());
    expectNoEngine();
    require(!QFileInfo(enginePidFile()).isFile(), u"the engine's file has outlived an orderly end"_s);
    m_files.checkAfterEnd();
}

void PatientProgram::expectNoEngine() {
    require(waitFor([this] { return enginesOf(m_disk.path()).isEmpty(); }, longestHang),
            u"an engine has outlived the program"_s);
    m_frozen.clear();
}

bool PatientProgram::freezeEngine() {
    const qint64 engine = m_program.enginePid();
    if (engine <= 0)
        return false;
    ::kill(static_cast<pid_t>(engine), SIGSTOP);
    m_frozen.append(engine);
    return true;
}

void PatientProgram::thawEngine() {
    for (const RunningEngine &engine : enginesOf(m_disk.path())) {
        if (m_frozen.contains(engine.pid))
            ::kill(static_cast<pid_t>(engine.pid), SIGCONT);
    }
    m_frozen.clear();
}

void PatientProgram::bringToOrder() {
    m_disk.free();
    thawEngine();
    m_files.removeFolders();
    repairModel();
    const bool isBack = waitFor(
        [this] {
            if (isInOrder() || !isAlive(m_program.pid()))
                return true;
            pressOn();
            return false;
        },
        2 * startTime);
    check();
    require(isBack, u"the chat doesn't come back; the buttons are "_s + buttons().join(u", "_s));
}

bool PatientProgram::isInOrder() {
    const QStringList shown = buttons();
    return m_program.enginePid() > 0 && shown.contains(u"Send message"_s) && !shown.contains(u"Try again"_s);
}

void PatientProgram::pressOn() {
    const QStringList shown = buttons();
    for (const QString &way :
         {u"Cancel"_s, u"Get started"_s, u"Start"_s, u"Try again"_s, u"Resume"_s, u"Stop generating"_s}) {
        if (shown.contains(way))
            window().press(way);
    }
}

void PatientProgram::repairModel() {
    if (!QFile::exists(modelFile()) || readFile(modelFile()) == m_model)
        return;
    writeAtomically(modelFile(), m_model);
    // The damage reaches into the memory of an engine that has read the file.
    killProcess(m_program.enginePid());
}

void PatientProgram::check() {
    require(isAlive(m_program.pid()), u"the program has ended by itself: "_s + lastWords());
    require(window().answers(), u"the window doesn't answer"_s);
    requireNoHang();
    m_files.check();
    const auto hasOwnEngineAtMost = [this] {
        const QList<RunningEngine> engines = enginesOf(m_disk.path());
        return engines.size() <= 1 &&
               std::all_of(engines.begin(), engines.end(),
                           [this](const RunningEngine &engine) { return engine.parent == m_program.pid(); });
    };
    require(waitFor(hasOwnEngineAtMost, longestHang), u"an engine is left over"_s);
}

void PatientProgram::requireNoHang() {
    require(window().slowestAnswer() < longestHang, u"the window hung for five seconds"_s);
}

QStringList PatientProgram::buttons() {
    return window().names(AccessibleRole::pushButton);
}

bool PatientProgram::waitFor(const std::function<bool()> &condition, int milliseconds) {
    constexpr int pause = 100;
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > milliseconds)
            return false;
        QTest::qWait(pause);
    }
    return true;
}

QString PatientProgram::lastWords() {
    return QString::fromUtf8(m_program.output().right(2000));
}
