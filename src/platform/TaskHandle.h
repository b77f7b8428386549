#pragma once

#include "platform/Task.h"

#include <memory>
#include <utility>

/// The hold on a task that nobody awaits. Destroying it, or starting another task in it, asks the task
/// to stop; the task itself ends when it next looks at its token. Main thread only.
class TaskHandle {
public:
    TaskHandle() = default;
    ~TaskHandle() { cancel(); }
    TaskHandle(TaskHandle &&other) noexcept : m_state(std::exchange(other.m_state, nullptr)) {}
    TaskHandle &operator=(TaskHandle &&other) noexcept;

    /// Starts the task that `begin(std::stop_token)` gives. The handle holds it from its first step on, so
    /// that the task can be cancelled from inside.
    template<typename Begin>
    void start(Begin &&begin);

    /// Asks the task to stop and lets go of it. Nothing happens where there is none.
    void cancel();

    /// True while the task hasn't come to its end.
    bool isRunning() const;

    /// What a task and its handle share.
    struct State {
        std::stop_source stop;
        bool running = true;
    };

private:
    std::shared_ptr<State> m_state;
};

/// Sees a task through to its end: a Cancelled is an ordinary end, any other exception is reported as
/// a critical message, since nobody else would hear of it.
Task<> supervise(std::shared_ptr<TaskHandle::State> state, Task<> task);

template<typename Begin>
void TaskHandle::start(Begin &&begin) {
    cancel();
    const auto state = std::make_shared<State>();
    m_state = state;
    supervise(state, begin(state->stop.get_token()));
}
