#include "platform/WaitPoint.h"

#include "platform/Mailbox.h"

#include <utility>

void WaitPoint::wake() {
    std::coroutine_handle<> waiter;
    {
        const std::lock_guard lock(m_lock);
        waiter = std::exchange(m_waiter, nullptr);
        m_woken = !waiter;
    }
    if (waiter)
        Mailbox::main().post([waiter] { waiter.resume(); });
}

bool WaitPoint::suspend(std::coroutine_handle<> waiter) {
    const std::lock_guard lock(m_lock);
    if (std::exchange(m_woken, false))
        return false;
    m_waiter = waiter;
    return true;
}
