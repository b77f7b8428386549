#pragma once

#include "platform/Task.h"

#ifndef Q_MOC_RUN
#include <coroutine>
#include <mutex>

/// A place where one coroutine of the main thread waits until somebody wakes it.
///
/// A wake that comes before the wait isn't lost: the next wait returns at once. wake() may be called
/// from any thread and never resumes the coroutine inside the call.
class WaitPoint {
public:
    void wake();

    /// co_await point.wait(): returns after the next wake, or at once if one is outstanding.
    auto wait() noexcept { return Awaiter{*this}; }

private:
    struct Awaiter {
        WaitPoint &point;
        bool await_ready() const noexcept { return false; }
        bool await_suspend(std::coroutine_handle<> waiter) { return point.suspend(waiter); }
        void await_resume() const noexcept {}
    };

    /// False if a wake is outstanding, which is then used up.
    bool suspend(std::coroutine_handle<> waiter);

    std::mutex m_lock;
    std::coroutine_handle<> m_waiter;
    bool m_woken = false;
};
#endif
