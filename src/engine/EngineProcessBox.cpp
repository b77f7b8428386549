#include "engine/EngineProcessBox.h"

#include "platform/AtomicFile.h"
#include "platform/Processes.h"

#include <QFile>

#include <chrono>
#include <thread>
#include <utility>

using namespace std::chrono_literals;

namespace {

bool isServer(qint64 processIdentifier) {
    return processPath(processIdentifier).contains(QLatin1String("llama-server"));
}

} // namespace

EngineProcessBox &EngineProcessBox::shared() {
    static EngineProcessBox box;
    return box;
}

void EngineProcessBox::setPidFile(const QString &path) {
    m_pidFile = path;
}

void EngineProcessBox::launch(ChildProcess::Launch launch) {
    std::shared_ptr<ChildProcess> before;
    {
        // Held for the moment of the launch, so that a terminate() from elsewhere finds the new child.
        const std::lock_guard lock(m_lock);
        m_expectingExit = false;
        auto process = std::make_shared<ChildProcess>(std::move(launch));
        before = std::exchange(m_process, std::move(process));
    }
    // The child before goes here, outside the lock: letting go of a running one waits for its end.
}

void EngineProcessBox::writePidFile() const {
    std::shared_ptr<ChildProcess> process;
    {
        const std::lock_guard lock(m_lock);
        process = m_process;
    }
    if (!process || m_pidFile.isEmpty())
        return;
    try {
        writeAtomically(m_pidFile, QByteArray::number(process->processIdentifier()));
    } catch (const FileError &) {
        // The file only helps after a crash; without it the engine runs as well.
    }
}

bool EngineProcessBox::isRunning() const {
    const std::lock_guard lock(m_lock);
    return m_process && m_process->isRunning();
}

bool EngineProcessBox::expectsExit() const {
    const std::lock_guard lock(m_lock);
    return m_expectingExit;
}

void EngineProcessBox::terminate() {
    std::shared_ptr<ChildProcess> process;
    {
        const std::lock_guard lock(m_lock);
        m_expectingExit = true;
        process = m_process;
    }
    if (process && process->isRunning()) {
        process->terminate();
        const auto deadline = std::chrono::steady_clock::now() + 3s;
        while (process->isRunning() && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(50ms);
        if (process->isRunning())
            process->kill();
    }
    // Another program may have put its own server's id there meanwhile.
    const std::optional<qint32> named = processInPidFile();
    const bool isOurs = process && named == process->processIdentifier();
    if (!m_pidFile.isEmpty() && (!named || isOurs || !isServer(*named)))
        QFile::remove(m_pidFile);
}

void EngineProcessBox::killStaleServer() const {
    const std::optional<qint32> pid = processInPidFile();
    if (!pid)
        return;
    if (isServer(*pid)) {
        terminateProcess(*pid);
        std::this_thread::sleep_for(300ms);
        killProcess(*pid);
    }
    QFile::remove(m_pidFile);
}

std::optional<qint32> EngineProcessBox::processInPidFile() const {
    bool isNumber = false;
    const qint32 pid = readFile(m_pidFile).value_or(QByteArray()).trimmed().toInt(&isNumber);
    return isNumber ? std::optional(pid) : std::nullopt;
}
