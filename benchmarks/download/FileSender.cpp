#include "download/FileSender.h"

#include <array>
#include <csignal>
#include <stdexcept>

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/sendfile.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void answer(int connection, int file, off_t size) {
    std::array<char, 8192> request{};
    if (::recv(connection, request.data(), request.size(), 0) <= 0)
        return;
    const std::string head =
        "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(size) + "\r\nConnection: close\r\n\r\n";
    ::send(connection, head.data(), head.size(), MSG_NOSIGNAL | MSG_MORE);
    for (off_t place = 0; place < size;) {
        if (::sendfile(connection, file, &place, static_cast<size_t>(size - place)) <= 0)
            return;
    }
}

[[noreturn]] void serve(int listener, const std::string &path) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::signal(SIGPIPE, SIG_IGN);
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    ::fstat(file, &status);
    while (true) {
        const int connection = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection < 0)
            continue;
        answer(connection, file, status.st_size);
        ::close(connection);
    }
}

} // namespace

FileSender::FileSender(const std::string &path) {
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto *const anyAddress = reinterpret_cast<sockaddr *>(&address);
    if (::bind(listener, anyAddress, length) != 0 || ::listen(listener, 8) != 0 ||
        ::getsockname(listener, anyAddress, &length) != 0)
        throw std::runtime_error("there is no port for the server");
    m_url = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/model.gguf";
    m_process = ::fork();
    if (m_process == 0)
        serve(listener, path);
    ::close(listener);
    if (m_process < 0)
        throw std::runtime_error("the server couldn't be started");
}

FileSender::~FileSender() {
    ::kill(m_process, SIGKILL);
    ::waitpid(m_process, nullptr, 0);
}
