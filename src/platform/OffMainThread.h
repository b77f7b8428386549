#pragma once

#include "platform/Channel.h"

#ifndef Q_MOC_RUN
#include <functional>
#include <thread>

/// Runs `work`, which blocks or takes long, on a thread of its own, and gives what it gives or throws what
/// it throws. Throws Cancelled at once when `stop` is requested: the work itself then comes to its end
/// unheard, so it may refer to nothing that it doesn't own. Main thread.
///
/// In a coroutine `work` is a variable: of a lambda made within the awaited call, g++ 12.2 destroys twice
/// what it holds.
template<typename T>
Task<T> offMainThread(std::function<T()> work, std::stop_token stop) {
    auto channel = std::make_shared<Channel<T>>();
    std::thread([channel, work = std::move(work)] {
        try {
            channel->push(work());
            channel->close();
        } catch (...) {
            channel->close(std::current_exception());
        }
    }).detach();
    std::optional<T> value = co_await channel->next(stop);
    if (!value)
        throw Cancelled();
    co_return std::move(*value);
}
#endif
