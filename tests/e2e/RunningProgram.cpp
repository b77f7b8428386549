#include "e2e/RunningProgram.h"

#include "e2e/ProcessStatus.h"
#include "e2e/TopLevelWindow.h"
#include "platform/Processes.h"

#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

RunningProgram::RunningProgram(const QString &executable) : m_executable(executable) {
    m_process.setProcessChannelMode(QProcess::MergedChannels);
}

QProcessEnvironment RunningProgram::environment() const {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HOME"_s, m_home.path());
    environment.insert(u"XDG_CONFIG_HOME"_s, configurationFolder());
    environment.insert(u"XDG_CACHE_HOME"_s, m_home.filePath(u"cache"_s));
    environment.insert(u"XDG_STATE_HOME"_s, m_home.filePath(u"state"_s));
    environment.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    return environment;
}

RunningProgram::~RunningProgram() {
    if (m_process.state() == QProcess::NotRunning)
        return;
    const qint64 engine = enginePid();
    m_process.kill();
    m_process.waitForFinished();
    killProcess(engine);
}

bool RunningProgram::start() {
    m_process.setProcessEnvironment(environment());
    m_process.start(m_executable, QStringList());
    if (!m_process.waitForStarted())
        return false;
    m_window = std::make_unique<AccessibleWindow>(m_process.processId());
    return true;
}

bool RunningProgram::waitUntilReady(int milliseconds) {
    return m_window->waitFor(u"Send message"_s, AccessibleRole::pushButton, milliseconds);
}

bool RunningProgram::waitForReply(int milliseconds) {
    return m_window->waitFor(u"Send message"_s, AccessibleRole::pushButton, milliseconds);
}

qint64 RunningProgram::enginePid() const {
    for (const qint64 child : childrenOf(pid())) {
        if (processPath(child).contains(u"llama-server"_s))
            return child;
    }
    return 0;
}

void RunningProgram::signal(int number) const {
    if (pid() > 0)
        ::kill(static_cast<pid_t>(pid()), number);
}

bool RunningProgram::chooseFromMenu(const QString &name, int entry) {
    constexpr int returnKey = 0xff0d;
    constexpr int downKey = 0xff54;
    if (!focusTopLevelWindow(pid()) || !m_window->askForMenu(name, AccessibleRole::listItem))
        return false;
    // A menu is no part of the window's tree, and takes the keys only once it is there.
    QTest::qWait(500);
    for (int step = 0; step < entry; ++step)
        m_window->typeKey(downKey);
    return m_window->typeKey(returnKey);
}

bool RunningProgram::closeWindow() const {
    return closeTopLevelWindow(pid());
}

bool RunningProgram::waitForEnd(int milliseconds) {
    return QTest::qWaitFor([this] { return m_process.state() == QProcess::NotRunning; }, milliseconds);
}

bool RunningProgram::endedOrderly() const {
    return m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
}
