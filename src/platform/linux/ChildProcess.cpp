#include "platform/ChildProcess.h"

#include "platform/Descriptor.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <linux/close_range.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int pieceSize = 16'384;
constexpr int pipeCapacity = 1'048'576; ///< the most that the kernel lets anybody ask for

struct Pipe {
    Descriptor reading;
    Descriptor writing;

    Pipe() {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            throw LaunchError(std::strerror(errno));
        reading.set(ends[0]);
        writing.set(ends[1]);
    }
};

/// Texts as the array of C strings that execve() takes.
class CStrings {
public:
    explicit CStrings(const QStringList &texts) {
        for (const QString &text : texts)
            m_texts.push_back(QFile::encodeName(text));
        for (QByteArray &text : m_texts)
            m_pointers.push_back(text.data());
        m_pointers.push_back(nullptr);
    }
    char *const *data() { return m_pointers.data(); }

private:
    std::vector<QByteArray> m_texts;
    std::vector<char *> m_pointers;
};

struct Standard {
    int input, output, error;
};

/// What the child does between fork and exec: calls that are safe there, and nothing else. On a
/// failure it writes the error number to `report` and ends.
[[noreturn]] void becomeProgram(const char *path, char *const *arguments, char *const *environment,
                                Standard standard, int report, pid_t parent) {
    // A group of its own: an interrupt typed in the terminal is for the program, which ends the child.
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent)
        ::_exit(127);

    struct sigaction standardAction {};
    standardAction.sa_handler = SIG_DFL;
    for (int signal = 1; signal < NSIG; ++signal)
        ::sigaction(signal, &standardAction, nullptr);
    sigset_t none;
    ::sigemptyset(&none);
    ::pthread_sigmask(SIG_SETMASK, &none, nullptr);

    if (::dup2(standard.input, STDIN_FILENO) >= 0 && ::dup2(standard.output, STDOUT_FILENO) >= 0 &&
        ::dup2(standard.error, STDERR_FILENO) >= 0) {
        ::syscall(SYS_close_range, 3U, ~0U, CLOSE_RANGE_CLOEXEC);
        ::execve(path, arguments, environment);
    }
    const int error = errno;
    [[maybe_unused]] const ssize_t written = ::write(report, &error, sizeof error);
    ::_exit(127);
}

bool readIsFinished(int descriptor, const std::function<void(QByteArrayView)> &take) {
    std::array<char, pieceSize> buffer;
    const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
    if (count > 0) {
        if (take)
            take(QByteArrayView(buffer.data(), count));
        return false;
    }
    return count == 0 || (errno != EINTR && errno != EAGAIN);
}

} // namespace

/// The thread that takes the child's output and reaps it, and the lock between reaping and signalling.
class ChildProcess::Watch {
public:
    explicit Watch(Launch launch) : m_launch(std::move(launch)) {
        start();
        try {
            watch();
        } catch (const std::exception &) {
            // A child that nobody watches would never be reaped.
            ::kill(m_pid, SIGKILL);
            ::waitpid(m_pid, nullptr, 0);
            throw;
        }
    }

    ~Watch() {
        signal(SIGKILL);
        m_thread.join();
    }
    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;

    bool isRunning() const {
        const std::lock_guard lock(m_lock);
        return !m_reaped;
    }

    void signal(int number) {
        const std::lock_guard lock(m_lock);
        if (!m_reaped)
            ::kill(m_pid, number);
    }

    pid_t pid() const { return m_pid; }

private:
    void start();
    void watch();
    void run();
    void reap();

    Launch m_launch;
    pid_t m_pid = -1;
    Descriptor m_exit;
    Descriptor m_output;
    Descriptor m_error;
    mutable std::mutex m_lock;
    bool m_reaped = false;
    std::thread m_thread;
};

void ChildProcess::Watch::start() {
    Pipe output;
    Pipe error;
    Pipe report;
    const Descriptor input(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    const QByteArray path = QFile::encodeName(m_launch.executable);
    CStrings arguments(QStringList{m_launch.executable} + m_launch.arguments);
    CStrings environment(m_launch.environment.toStringList());

    const pid_t parent = ::getpid();
    m_pid = ::fork();
    if (m_pid < 0)
        throw LaunchError(std::strerror(errno));
    if (m_pid == 0)
        becomeProgram(path.constData(), arguments.data(), environment.data(),
                      {input.number(), output.writing.number(), error.writing.number()},
                      report.writing.number(), parent);

    report.writing.close();
    int failure = 0;
    ssize_t count = 0;
    do
        count = ::read(report.reading.number(), &failure, sizeof failure);
    while (count < 0 && errno == EINTR);
    if (count == sizeof failure) {
        ::waitpid(m_pid, nullptr, 0);
        throw LaunchError(std::strerror(failure));
    }
    m_output.set(output.reading.release());
    m_error.set(error.reading.release());
    for (const Descriptor *end : {&m_output, &m_error})
        ::fcntl(end->number(), F_SETFL, O_NONBLOCK);
}

void ChildProcess::Watch::watch() {
    m_exit.set(static_cast<int>(::syscall(SYS_pidfd_open, m_pid, 0)));
    if (m_exit.number() < 0)
        throw LaunchError(std::strerror(errno));
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::system_error &error) {
        throw LaunchError(error.what());
    }
}

void ChildProcess::Watch::run() {
    bool exited = false;
    while (!exited) {
        std::array<pollfd, 3> waits{pollfd{m_output.number(), POLLIN, 0}, pollfd{m_error.number(), POLLIN, 0},
                                    pollfd{m_exit.number(), POLLIN, 0}};
        if (::poll(waits.data(), waits.size(), -1) < 0 && errno != EINTR)
            break;
        exited = waits[2].revents != 0;
        if (waits[0].revents != 0 && readIsFinished(m_output.number(), m_launch.onOutput))
            m_output.close();
        if (waits[1].revents != 0 && readIsFinished(m_error.number(), m_launch.onError))
            m_error.close();
    }
    // What the child printed last is still in the pipes: so many reads at most as a pipe can hold, since
    // a grandchild may go on printing.
    for (auto [end, take] :
         {std::pair{&m_output, &m_launch.onOutput}, std::pair{&m_error, &m_launch.onError}}) {
        pollfd rest{end->number(), POLLIN, 0};
        for (int reads = 0; reads < pipeCapacity / pieceSize && end->number() >= 0; ++reads) {
            if (::poll(&rest, 1, 0) <= 0 || readIsFinished(end->number(), *take))
                break;
        }
    }
    reap();
    if (m_launch.onExit)
        m_launch.onExit();
}

void ChildProcess::Watch::reap() {
    // Wait without reaping first: the id stays taken until nobody can be about to signal it.
    siginfo_t information{};
    while (::waitid(P_PID, static_cast<id_t>(m_pid), &information, WEXITED | WNOWAIT) < 0 && errno == EINTR) {
    }
    const std::lock_guard lock(m_lock);
    ::waitpid(m_pid, nullptr, 0);
    m_reaped = true;
}

ChildProcess::ChildProcess(Launch launch) : m_watch(std::make_unique<Watch>(std::move(launch))) {}

ChildProcess::~ChildProcess() = default;

bool ChildProcess::isRunning() const {
    return m_watch->isRunning();
}

void ChildProcess::terminate() {
    m_watch->signal(SIGTERM);
}

void ChildProcess::kill() {
    m_watch->signal(SIGKILL);
}

qint64 ChildProcess::processIdentifier() const {
    return m_watch->pid();
}
