#pragma once

// moc can't read the standard headers that coroutines need, and doesn't have to.
#ifndef Q_MOC_RUN

#include <qcorotask.h>

#include <exception>
#include <stop_token>

/// A call that may wait. It runs at once up to its first wait, and goes on in the main thread's event
/// loop. A coroutine takes its parameters by value, the std::stop_token last; after each wait it asks
/// that token before it touches an object that may be gone.
template<typename T = void>
using Task = QCoro::Task<T>;

#endif

/// Raised by a wait that was asked to stop.
class Cancelled : public std::exception {
public:
    const char *what() const noexcept override { return "cancelled"; }
};
