// A stand-in for the engine's executable, for what the real one can't be made to do. It takes the real
// one's arguments; FAKE_SERVER says how it behaves, FAKE_SERVER_RECORD names a file that gets its
// arguments and environment, one a line.
//
//   ready            answers 200 to everything
//   loading N        answers 503 N times, then 200
//   never            answers 404 for ever
//   exit TEXT        prints TEXT on standard error and ends with status 1
//   exit-once FILE   does so if FILE isn't there (and makes it), else is ready
//   stubborn         ready, and ignores SIGTERM
//   orderly FILE     ready, makes FILE, and writes "asked" into it when it gets SIGTERM
//   chatty           ready, and prints without end on both streams
//   moody            answers 200 once, then 500, 503, and 404 for ever
//
// FAKE_SERVER_COUNT names a file that grows by a byte with each answer.

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

extern char **environ;

namespace {

void record(int argc, char **argv) {
    const char *path = std::getenv("FAKE_SERVER_RECORD");
    if (!path)
        return;
    std::ofstream file(path);
    for (int index = 1; index < argc; ++index)
        file << argv[index] << '\n';
    for (char **variable = environ; *variable; ++variable)
        file << *variable << '\n';
}

int listenOn(int port) {
    const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
    const int yes = 1;
    setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = inet_addr("127.0.0.1");
    if (bind(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0 ||
        listen(descriptor, 16) != 0) {
        std::cerr << "couldn't bind to port " << port << std::endl;
        std::exit(1);
    }
    return descriptor;
}

void printWithoutEnd() {
    const std::string line(1000, 'x');
    while (true) {
        std::cout << line << '\n';
        std::cerr << line;
    }
}

[[noreturn]] void complain(const std::string &text) {
    std::cerr << text << std::endl;
    std::exit(1);
}

int noteFile = -1;

void noteTermination(const std::string &path) {
    noteFile = open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    std::signal(SIGTERM, [](int) {
        [[maybe_unused]] const ssize_t written = write(noteFile, "asked", 5);
        _exit(0);
    });
}

void count() {
    if (const char *path = std::getenv("FAKE_SERVER_COUNT"))
        std::ofstream(path, std::ios::app) << '.';
}

void answer(int client, int status) {
    char buffer[4096];
    [[maybe_unused]] const ssize_t count = read(client, buffer, sizeof buffer);
    const std::string text =
        "HTTP/1.1 " + std::to_string(status) + " X\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
    [[maybe_unused]] const ssize_t written = write(client, text.data(), text.size());
    close(client);
}

} // namespace

int main(int argc, char **argv) {
    record(argc, argv);
    std::istringstream behaviour(std::getenv("FAKE_SERVER") ? std::getenv("FAKE_SERVER") : "ready");
    std::string kind;
    std::string rest;
    behaviour >> kind;
    std::getline(behaviour >> std::ws, rest);

    if (kind == "exit")
        complain(rest);
    if (kind == "exit-once" && !std::ifstream(rest)) {
        std::ofstream(rest) << "once";
        complain("not this time");
    }
    if (kind == "stubborn")
        std::signal(SIGTERM, SIG_IGN);
    if (kind == "orderly")
        noteTermination(rest);
    if (kind == "chatty")
        std::thread(printWithoutEnd).detach();

    int port = 0;
    for (int index = 1; index + 1 < argc; ++index) {
        if (std::strcmp(argv[index], "--port") == 0)
            port = std::atoi(argv[index + 1]);
    }
    int loading = kind == "loading" ? std::atoi(rest.c_str()) : 0;
    const int moods[] = {200, 500, 503, 404};
    int mood = 0;
    const int descriptor = listenOn(port);
    while (true) {
        const int client = accept(descriptor, nullptr, nullptr);
        if (client < 0)
            continue;
        count();
        if (kind == "moody")
            answer(client, moods[std::min(mood++, 3)]);
        else if (kind == "never")
            answer(client, 404);
        else
            answer(client, loading-- > 0 ? 503 : 200);
    }
}
