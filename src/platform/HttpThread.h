#pragma once

#include "platform/Http.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

class HttpTransfer;

/// The network thread behind Http.h: libcurl's multi interface and the requests under way. It starts
/// with the first request and ends with the application object.
class HttpThread {
public:
    static HttpThread &shared();

    /// Any thread.
    quint64 start(HttpRequest request, std::shared_ptr<HttpReceiver> receiver);
    void goOn(quint64 id);
    void abort(quint64 id);

private:
    using Job = std::function<void()>;

    HttpThread();
    void post(Job job);
    void shutDown();

    // All below: the network thread.
    void run();
    void runJobs();
    int millisecondsToNextDeadline() const;
    void endFinished();
    void endSilent();
    std::unique_ptr<HttpTransfer> take(quint64 id);

    void *m_multi;
    std::map<quint64, std::unique_ptr<HttpTransfer>> m_transfers;
    bool m_isEnding = false;

    std::mutex m_lock;
    std::deque<Job> m_jobs;

    std::thread m_thread;
};
