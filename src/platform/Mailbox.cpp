#include "platform/Mailbox.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace {
const auto wakeUp = static_cast<QEvent::Type>(QEvent::registerEventType());
}

void Mailbox::post(Job job) {
    bool first = false;
    {
        const std::lock_guard lock(m_lock);
        first = m_jobs.empty();
        m_jobs.push_back(std::move(job));
    }
    if (first)
        QCoreApplication::postEvent(this, new QEvent(wakeUp));
}

Mailbox &Mailbox::main() {
    static auto *const mailbox = [] {
        auto *const made = new Mailbox;
        // The first to post may be another thread.
        made->moveToThread(QCoreApplication::instance()->thread());
        return made;
    }();
    return *mailbox;
}

bool Mailbox::event(QEvent *event) {
    if (event->type() != wakeUp)
        return QObject::event(event);
    std::deque<Job> jobs;
    {
        const std::lock_guard lock(m_lock);
        jobs.swap(m_jobs);
    }
    for (const Job &job : jobs)
        job();
    return true;
}
