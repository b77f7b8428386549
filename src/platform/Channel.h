#pragma once

#include "platform/WaitPoint.h"

#ifndef Q_MOC_RUN
#include <deque>
#include <exception>
#include <memory>
#include <optional>

/// A queue without a limit from a producer on any thread to one coroutine of the main thread. Producer
/// and consumer share it through a std::shared_ptr, so that neither has to outlive the other.
template<typename T>
class Channel : public std::enable_shared_from_this<Channel<T>> {
public:
    /// Hands over a value. Ignored after close().
    void push(T value) {
        {
            const std::lock_guard lock(m_lock);
            if (m_closed)
                return;
            m_values.push_back(std::move(value));
        }
        m_arrival.wake();
    }

    /// Nothing more comes: after the values that wait, next() gives nothing, or throws `error`.
    void close(std::exception_ptr error = nullptr) {
        {
            const std::lock_guard lock(m_lock);
            if (std::exchange(m_closed, true))
                return;
            m_error = std::move(error);
        }
        m_arrival.wake();
    }

    /// The next value; nothing at the end, and nothing as soon as `stop` is requested. Throws the error
    /// that the channel was closed with. One call at a time, on the main thread.
    Task<std::optional<T>> next(std::stop_token stop) { return waitForNext(this->shared_from_this(), stop); }

private:
    static Task<std::optional<T>> waitForNext(std::shared_ptr<Channel> self, std::stop_token stop) {
        const std::stop_callback wakeOnStop(stop, [self] { self->m_arrival.wake(); });
        while (!stop.stop_requested()) {
            bool closed = false;
            std::optional<T> value = self->take(closed);
            if (value || closed)
                co_return value;
            co_await self->m_arrival.wait();
        }
        co_return std::nullopt;
    }

    std::optional<T> take(bool &closed) {
        const std::lock_guard lock(m_lock);
        if (!m_values.empty()) {
            std::optional<T> value(std::move(m_values.front()));
            m_values.pop_front();
            return value;
        }
        closed = m_closed;
        if (closed && m_error)
            std::rethrow_exception(std::exchange(m_error, nullptr));
        return std::nullopt;
    }

    std::mutex m_lock;
    std::deque<T> m_values;
    std::exception_ptr m_error;
    bool m_closed = false;
    WaitPoint m_arrival;
};
#endif
