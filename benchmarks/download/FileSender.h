#pragma once

#include <string>

#include <sys/types.h>

/// A web server of one file, in a process of its own that does nothing but sendfile(), so that it is never
/// what a download waits for. It ends with this object, and with the benchmark.
class FileSender {
public:
    /// Throws std::runtime_error. To be made before there are threads.
    explicit FileSender(const std::string &path);
    ~FileSender();
    FileSender(const FileSender &) = delete;
    FileSender &operator=(const FileSender &) = delete;

    const std::string &url() const { return m_url; }

private:
    pid_t m_process = -1;
    std::string m_url;
};
