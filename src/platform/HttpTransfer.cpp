#include "platform/HttpTransfer.h"

#include <utility>

#include <curl/curl.h>

static_assert(CURL_ERROR_SIZE == 256);
static_assert(sizeof(curl_off_t) == sizeof(qint64));

namespace {

constexpr int firstFinalStatus = 200;

bool isLoopback(const QString &host) {
    return host == QLatin1String("localhost") || host == QLatin1String("::1") ||
           host.startsWith(QLatin1String("127."));
}

} // namespace

HttpTransfer::HttpTransfer(quint64 id, HttpRequest request, std::shared_ptr<HttpReceiver> receiver)
    : m_id(id),
      m_request(std::move(request)),
      m_receiver(std::move(receiver)),
      m_handle(curl_easy_init()) {
    setOptions();
    setBody();
    setHeaders();
}

HttpTransfer::~HttpTransfer() {
    curl_easy_cleanup(m_handle);
    curl_slist_free_all(m_headers);
}

void HttpTransfer::setOptions() {
    curl_easy_setopt(m_handle, CURLOPT_PRIVATE, this);
    curl_easy_setopt(m_handle, CURLOPT_ERRORBUFFER, m_error.data());
    curl_easy_setopt(m_handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(m_handle, CURLOPT_PROTOCOLS_STR, "http,https");
    // A connection of its own: on one that was kept, a request is sent again when the server hangs up.
    curl_easy_setopt(m_handle, CURLOPT_FRESH_CONNECT, 1L);
    curl_easy_setopt(m_handle, CURLOPT_FORBID_REUSE, 1L);
    if (isLoopback(m_request.url.host()))
        curl_easy_setopt(m_handle, CURLOPT_PROXY, "");

    curl_easy_setopt(m_handle, CURLOPT_HEADERFUNCTION, takeHeader);
    curl_easy_setopt(m_handle, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(m_handle, CURLOPT_WRITEFUNCTION, takeBody);
    curl_easy_setopt(m_handle, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(m_handle, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(m_handle, CURLOPT_XFERINFOFUNCTION, takeProgress);
    curl_easy_setopt(m_handle, CURLOPT_XFERINFODATA, this);
}

void HttpTransfer::setBody() {
    curl_easy_setopt(m_handle, CURLOPT_URL, m_request.url.toEncoded().constData());
    if (!m_request.body.isEmpty()) {
        curl_easy_setopt(m_handle, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(m_request.body.size()));
        curl_easy_setopt(m_handle, CURLOPT_POSTFIELDS, m_request.body.constData());
    }
    curl_easy_setopt(m_handle, CURLOPT_CUSTOMREQUEST, m_request.method.constData());
}

void HttpTransfer::setHeaders() {
    // Without this libcurl asks the server's leave before it sends a larger body, and waits for it.
    m_headers = curl_slist_append(m_headers, "Expect:");
    for (const auto &[name, value] : m_request.headers)
        m_headers = curl_slist_append(m_headers, (name + ": " + value).constData());
    curl_easy_setopt(m_handle, CURLOPT_HTTPHEADER, m_headers);
}

size_t HttpTransfer::takeHeader(char *bytes, size_t size, size_t count, void *self) {
    auto &transfer = *static_cast<HttpTransfer *>(self);
    const size_t length = size * count;
    const QByteArrayView line(bytes, static_cast<qsizetype>(length));
    if (line != QByteArrayView("\r\n") && line != QByteArrayView("\n"))
        return length;
    long status = 0;
    curl_easy_getinfo(transfer.m_handle, CURLINFO_RESPONSE_CODE, &status);
    if (status < firstFinalStatus)
        return length;
    transfer.m_isHungUp = transfer.m_receiver->head(static_cast<int>(status)) == HttpReceiver::Next::hangUp;
    return transfer.m_isHungUp ? 0 : length;
}

size_t HttpTransfer::takeBody(char *bytes, size_t size, size_t count, void *self) {
    auto &transfer = *static_cast<HttpTransfer *>(self);
    const size_t length = size * count;
    const auto next = transfer.m_receiver->bytes(QByteArray(bytes, static_cast<qsizetype>(length)));
    transfer.m_isHungUp = next == HttpReceiver::Next::hangUp;
    return transfer.m_isHungUp ? 0 : length;
}

int HttpTransfer::takeProgress(void *self, qint64, qint64 down, qint64, qint64 up) {
    auto &transfer = *static_cast<HttpTransfer *>(self);
    if (std::exchange(transfer.m_moved, down + up) != down + up)
        transfer.m_lastActivity = std::chrono::steady_clock::now();
    return 0;
}

std::string HttpTransfer::describe(int code) const {
    return m_error.front() ? std::string(m_error.data()) : curl_easy_strerror(static_cast<CURLcode>(code));
}
