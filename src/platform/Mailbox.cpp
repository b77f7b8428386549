#include "platform/Mailbox.h"

#include <QCoreApplication>
#include <QEvent>

#include <memory>
#include <utility>

namespace {
const auto wakeUp = static_cast<QEvent::Type>(QEvent::registerEventType());
}

void Mailbox::post(Job job) {
    auto wake = std::make_unique<QEvent>(wakeUp);
    {
        const std::lock_guard lock(m_lock);
        const bool isAwake = !m_jobs.empty();
        m_jobs.push_back(std::move(job));
        if (isAwake)
            return;
    }
    QCoreApplication::postEvent(this, wake.release());
}

Mailbox &Mailbox::main() {
    static auto *const mailbox = new Mailbox;
    return *mailbox;
}

namespace {

void makeMainMailbox() {
    Mailbox::main();
}

} // namespace

// By the main thread, before there is any other that posts.
Q_COREAPP_STARTUP_FUNCTION(makeMainMailbox)

bool Mailbox::event(QEvent *event) {
    std::deque<Job> jobs;
    {
        // Taken before the event is looked at: so its making, before the poster's lock, is ordered too.
        const std::lock_guard lock(m_lock);
        if (event->type() == wakeUp)
            jobs.swap(m_jobs);
    }
    if (jobs.empty())
        return QObject::event(event);
    for (const Job &job : jobs)
        job();
    return true;
}
