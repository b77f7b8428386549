#include "program/WatchedProgram.h"

#include "figures/ProcessorTime.h"

#include <QFile>
#include <QStringList>

#include <stdexcept>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 120'000;

std::chrono::nanoseconds now() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

} // namespace

WatchedProgram::WatchedProgram(const QString &path, const QString &orders,
                               const QList<std::pair<QString, QString>> &environment) {
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    variables.insert(u"QT_PLUGIN_PATH"_s, QStringLiteral(DRIVER_FOLDER));
    variables.insert(u"QT_QPA_GENERIC_PLUGINS"_s, u"benchmark:"_s + orders);
    variables.remove(u"DBUS_SESSION_BUS_ADDRESS"_s);
    variables.insert(u"XDG_RUNTIME_DIR"_s, m_runtimeFolder.path());
    variables.insert(u"OSTRELIN_CATALOGURL"_s, u"http://127.0.0.1:9/catalog.json"_s);
    for (const auto &[name, value] : environment)
        variables.insert(name, value);
    m_process.setProcessEnvironment(variables);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_start = now();
    m_process.start(path, QStringList());
    if (!m_process.waitForStarted())
        throw std::runtime_error(path.toStdString() + " can't be started");
}

WatchedProgram::~WatchedProgram() {
    m_process.terminate();
    if (!m_process.waitForFinished(10'000)) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

QByteArray WatchedProgram::waitFor(const QByteArray &word) {
    while (m_process.canReadLine() || m_process.waitForReadyRead(patience)) {
        while (m_process.canReadLine()) {
            const QByteArray line = m_process.readLine().trimmed();
            if (line.startsWith(word))
                return line.sliced(word.size()).trimmed();
        }
    }
    throw std::runtime_error("the program never came to \"" + word.toStdString() + "\"");
}

double WatchedProgram::secondsToPaint() {
    const std::chrono::nanoseconds painted(waitFor("painted").toLongLong());
    return std::chrono::duration<double>(painted - m_start).count();
}

void WatchedProgram::waitForEnd() {
    if (!m_process.waitForFinished(patience))
        throw std::runtime_error("the program didn't end");
}

double WatchedProgram::processorSeconds() const {
    return processorSecondsOf(id());
}

double WatchedProgram::residentBytes() const {
    QFile file(u"/proc/%1/statm"_s.arg(id()));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the program's memory can't be read");
    // statm (proc(5)): sizes in pages, the resident ones second.
    return file.readAll().split(' ').at(1).toDouble() * static_cast<double>(sysconf(_SC_PAGESIZE));
}
