#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

/// Jobs for the thread in which this object lives, run in the order of their posting by that thread's
/// event loop. post() may be called from any thread.
class Mailbox : public QObject {
public:
    using Job = std::function<void()>;

    explicit Mailbox(QObject *parent = nullptr) : QObject(parent) {}

    /// Takes a job for later; never runs it inside this call.
    void post(Job job);

    /// The mailbox of the main thread. It lives as long as the process, so that a thread which is late
    /// at the end can't post to an object that is gone. Needs an application object.
    static Mailbox &main();

protected:
    bool event(QEvent *event) override;

private:
    std::mutex m_lock;
    std::deque<Job> m_jobs;
};
