#pragma once

#include "platform/WaitPoint.h"

#ifndef Q_MOC_RUN
#include <exception>
#include <functional>
#include <optional>
#include <thread>

/// A call that blocks, on a thread of its own, for the main thread to wait for without blocking. Main
/// thread only, but for the work itself.
template<typename T>
class OwnThread {
public:
    /// Begins `work`.
    explicit OwnThread(std::function<T()> work) : m_thread([this, work = std::move(work)] { run(work); }) {}

    /// Blocks until the work has ended.
    ~OwnThread() { join(); }
    OwnThread(const OwnThread &) = delete;
    OwnThread &operator=(const OwnThread &) = delete;

    /// Blocks until the work has ended.
    void join() {
        if (m_thread.joinable())
            m_thread.join();
    }

    /// What the work gives, or throws. Once; this object has to stay until then.
    Task<T> result() {
        co_await m_end.wait();
        join();
        if (m_error)
            std::rethrow_exception(std::exchange(m_error, nullptr));
        co_return std::move(*m_value);
    }

private:
    void run(const std::function<T()> &work) {
        try {
            m_value = work();
        } catch (...) {
            m_error = std::current_exception();
        }
        m_end.wake();
    }

    std::optional<T> m_value;
    std::exception_ptr m_error;
    WaitPoint m_end;
    std::thread m_thread;
};
#endif
