#include "platform/HttpThread.h"

#include "platform/HttpTransfer.h"

#include <QCoreApplication>

#include <algorithm>
#include <atomic>
#include <chrono>

#include <curl/curl.h>

HttpThread &HttpThread::shared() {
    static auto *const thread = new HttpThread;
    return *thread;
}

HttpThread::HttpThread() {
    curl_global_init(CURL_GLOBAL_DEFAULT);
    m_multi = curl_multi_init();
    m_thread = std::thread([this] { run(); });
    qAddPostRoutine([] { shared().shutDown(); });
}

void HttpThread::shutDown() {
    post([this] { m_isEnding = true; });
    m_thread.join();
}

quint64 HttpThread::start(HttpRequest request, std::shared_ptr<HttpReceiver> receiver) {
    static std::atomic<quint64> last{0};
    const quint64 id = ++last;
    post([this, id, request = std::move(request), receiver = std::move(receiver)] {
        auto transfer = std::make_unique<HttpTransfer>(id, request, receiver);
        curl_multi_add_handle(m_multi, transfer->handle());
        m_transfers.emplace(id, std::move(transfer));
    });
    return id;
}

void HttpThread::goOn(quint64 id) {
    post([this, id] {
        const auto found = m_transfers.find(id);
        if (found == m_transfers.end())
            return;
        found->second->goOn();
        if (found->second->isHungUp())
            take(id);
    });
}

void HttpThread::abort(quint64 id) {
    post([this, id] { take(id); });
}

void HttpThread::post(Job job) {
    {
        const std::lock_guard lock(m_lock);
        m_jobs.push_back(std::move(job));
    }
    curl_multi_wakeup(m_multi);
}

void HttpThread::run() {
    while (!m_isEnding) {
        runJobs();
        int running = 0;
        curl_multi_perform(m_multi, &running);
        endFinished();
        endSilent();
        curl_multi_poll(m_multi, nullptr, 0, millisecondsToNextDeadline(), nullptr);
    }
    while (!m_transfers.empty())
        take(m_transfers.begin()->first);
}

void HttpThread::runJobs() {
    std::deque<Job> jobs;
    {
        const std::lock_guard lock(m_lock);
        jobs.swap(m_jobs);
    }
    for (const Job &job : jobs)
        job();
}

int HttpThread::millisecondsToNextDeadline() const {
    constexpr std::chrono::milliseconds longest{60'000};
    if (m_isEnding)
        return 0;
    auto wait = longest;
    const auto now = std::chrono::steady_clock::now();
    for (const auto &[id, transfer] : m_transfers)
        wait = std::min(wait, std::chrono::ceil<std::chrono::milliseconds>(transfer->deadline() - now));
    return static_cast<int>(std::max(wait, std::chrono::milliseconds(0)).count());
}

void HttpThread::endFinished() {
    int left = 0;
    while (const CURLMsg *const message = curl_multi_info_read(m_multi, &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        const CURLcode code = message->data.result;
        HttpTransfer *found = nullptr;
        curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &found);
        const std::unique_ptr<HttpTransfer> transfer = take(found->id());
        if (transfer->isHungUp())
            continue;
        std::optional<HttpError> error;
        if (code != CURLE_OK)
            error.emplace(transfer->reasonOf(code));
        transfer->receiver().end(error);
    }
}

void HttpThread::endSilent() {
    const auto now = std::chrono::steady_clock::now();
    for (auto next = m_transfers.begin(); next != m_transfers.end();) {
        const auto present = next++;
        if (present->second->deadline() > now)
            continue;
        const std::unique_ptr<HttpTransfer> transfer = take(present->first);
        transfer->receiver().end(HttpError(HttpError::Reason::timedOut));
    }
}

std::unique_ptr<HttpTransfer> HttpThread::take(quint64 id) {
    const auto found = m_transfers.find(id);
    if (found == m_transfers.end())
        return nullptr;
    std::unique_ptr<HttpTransfer> transfer = std::move(found->second);
    m_transfers.erase(found);
    curl_multi_remove_handle(m_multi, transfer->handle());
    return transfer;
}
