#pragma once

#include "platform/Task.h"

#include <QTest>

#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>

#include <gtest/gtest.h>

namespace await_detail {

struct Outcome {
    bool done = false;
    std::exception_ptr error;
};

template<typename T>
Task<> see(Task<T> task, std::shared_ptr<Outcome> outcome, std::shared_ptr<std::optional<T>> value) {
    try {
        *value = co_await task;
    } catch (...) {
        outcome->error = std::current_exception();
    }
    outcome->done = true;
}

inline Task<> see(Task<> task, std::shared_ptr<Outcome> outcome) {
    try {
        co_await task;
    } catch (...) {
        outcome->error = std::current_exception();
    }
    outcome->done = true;
}

inline void runUntilDone(const Outcome &outcome) {
    if (!QTest::qWaitFor([&] { return outcome.done; }, 30'000))
        throw std::runtime_error("the task didn't end within 30 seconds");
    if (outcome.error)
        std::rethrow_exception(outcome.error);
}

} // namespace await_detail

/// Runs the event loop until the task has ended, and gives what it gave or throws what it threw.
/// (QCoro's own waitFor() never returns from a task that throws after it has waited.)
template<typename T>
T await(Task<T> task) {
    auto outcome = std::make_shared<await_detail::Outcome>();
    auto value = std::make_shared<std::optional<T>>();
    await_detail::see(std::move(task), outcome, value);
    await_detail::runUntilDone(*outcome);
    return std::move(**value);
}

inline void await(Task<> task) {
    auto outcome = std::make_shared<await_detail::Outcome>();
    await_detail::see(std::move(task), outcome);
    await_detail::runUntilDone(*outcome);
}

/// Runs the event loop until `condition` holds; false if it doesn't within `milliseconds`.
template<typename Condition>
bool eventually(Condition &&condition, int milliseconds = 10'000) {
    return QTest::qWaitFor(std::forward<Condition>(condition), milliseconds);
}

/// Runs the event loop for that long: for what must not happen.
inline void letPass(int milliseconds) {
    QTest::qWait(milliseconds);
}
