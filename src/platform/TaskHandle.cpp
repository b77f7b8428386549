#include "platform/TaskHandle.h"

#include <QDebug>

TaskHandle &TaskHandle::operator=(TaskHandle &&other) noexcept {
    if (this != &other) {
        cancel();
        m_state = std::exchange(other.m_state, nullptr);
    }
    return *this;
}

void TaskHandle::cancel() {
    // A stop may run code that assigns to this very handle.
    if (const auto state = std::exchange(m_state, nullptr))
        state->stop.request_stop();
}

bool TaskHandle::isRunning() const {
    return m_state && m_state->running;
}

Task<> supervise(std::shared_ptr<TaskHandle::State> state, Task<> task) {
    try {
        co_await task;
    } catch (const Cancelled &) {
        // Asked for, so nothing to tell.
    } catch (const std::exception &error) {
        qCritical("A task ended with an error that nobody handles: %s", error.what());
    }
    state->running = false;
}
