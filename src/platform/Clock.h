#pragma once

#include "platform/Task.h"

#include <QDateTime>

#include <chrono>

/// The time, as a thing that a test can hold in its hand. Main thread only.
class Clock {
public:
    virtual ~Clock() = default;

    /// The present moment, UTC.
    virtual QDateTime now() const = 0;

    /// Time since some fixed moment; never runs backwards.
    virtual std::chrono::milliseconds elapsed() const = 0;

#ifndef Q_MOC_RUN
    /// Waits for that long, or until `stop` is requested. Which of the two it was, the token tells.
    virtual Task<> sleep(std::chrono::milliseconds duration, std::stop_token stop) = 0;
#endif

    /// The machine's own time.
    static Clock &system();
};
