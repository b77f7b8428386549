#include "engine/DownloaderProcess.h"

#include <QList>

#include <csignal>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

QByteArrayList inSpace(const QByteArray &space, const QByteArray &command, const QByteArrayList &arguments) {
    QByteArrayList line{"unshare", space};
    if (::geteuid() != 0)
        line << "--user"
             << "--map-root-user";
    return line << "sh"
                << "-c" << command << ENGINE_DOWNLOADER << arguments;
}

} // namespace

DownloaderProcess::DownloaderProcess(const QByteArrayList &arguments) {
    start(QByteArrayList{ENGINE_DOWNLOADER} + arguments);
}

DownloaderProcess::DownloaderProcess(const QByteArray &space, const QByteArray &command,
                                     const QByteArrayList &arguments) {
    start(inSpace(space, command, arguments));
}

DownloaderProcess::~DownloaderProcess() {
    kill();
    ::close(m_output);
}

bool DownloaderProcess::canMake(const QByteArray &space, const QByteArray &command) {
    DownloaderProcess attempt(space, command + " && echo made", {});
    return attempt.output().contains("made");
}

void DownloaderProcess::start(const QByteArrayList &arguments) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    QList<char *> line;
    for (const QByteArray &argument : arguments)
        line.append(const_cast<char *>(argument.constData()));
    line.append(nullptr);
    if (::posix_spawnp(&m_process, line.first(), &actions, nullptr, line.data(), environ) != 0)
        m_process = -1;
    posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    m_output = ends[0];
}

void DownloaderProcess::wait() {
    if (m_process > 0)
        ::waitpid(std::exchange(m_process, -1), &m_status, 0);
}

bool DownloaderProcess::kill() {
    if (m_process <= 0)
        return false;
    ::kill(m_process, SIGKILL);
    wait();
    return WIFSIGNALED(m_status);
}

QByteArrayList DownloaderProcess::output() {
    QByteArray text;
    char buffer[4096];
    for (ssize_t count = ::read(m_output, buffer, sizeof buffer); count > 0;
         count = ::read(m_output, buffer, sizeof buffer))
        text.append(buffer, count);
    wait();
    return text.trimmed().split('\n');
}
