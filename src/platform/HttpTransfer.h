#pragma once

#include "platform/Http.h"

#include <chrono>
#include <memory>

using CURL = void;
struct curl_slist;

/// One request on libcurl: its handle, its options, and what its callbacks tell the receiver. Network
/// thread only.
class HttpTransfer {
public:
    using Moment = std::chrono::steady_clock::time_point;

    HttpTransfer(quint64 id, HttpRequest request, std::shared_ptr<HttpReceiver> receiver);
    ~HttpTransfer();
    HttpTransfer(const HttpTransfer &) = delete;
    HttpTransfer &operator=(const HttpTransfer &) = delete;

    quint64 id() const { return m_id; }
    CURL *handle() const { return m_handle; }
    HttpReceiver &receiver() const { return *m_receiver; }

    /// When the connection will have been without a byte for too long, or the whole exchange takes too long.
    Moment deadline() const;

    /// The receiver has hung up; nothing more is told to it.
    bool isHungUp() const { return m_isHungUp; }

    /// Lets a transfer that its receiver holds back go on.
    void goOn();

    /// What one of libcurl's error codes means for the reader.
    HttpError::Reason reasonOf(int code) const;

private:
    static size_t takeHeader(char *bytes, size_t size, size_t count, void *self);
    static size_t takeBody(char *bytes, size_t size, size_t count, void *self);
    static int takeProgress(void *self, qint64 downTotal, qint64 down, qint64 upTotal, qint64 up);

    void setOptions();
    void setRoute();
    void setCallbacks();
    void setBody();
    void setHeaders();
    void takeHeaderLine(QByteArrayView line);
    bool isTooMuchUnread() const;
    bool wasSent() const;
    HttpError::Reason reasonOfNoConnection() const;

    const quint64 m_id;
    const HttpRequest m_request;
    const std::shared_ptr<HttpReceiver> m_receiver;
    CURL *m_handle;
    curl_slist *m_headers = nullptr;
    const Moment m_start = std::chrono::steady_clock::now();
    Moment m_lastActivity = m_start;
    qint64 m_moved = 0;
    qint64 m_down = 0;     ///< bytes of the present answer's body, as they come
    qint64 m_received = 0; ///< bytes that have come, with the heads and with every answer before the present
    qint64 m_read = 0;     ///< bytes that the receiver has taken
    bool m_leadsElsewhere = false; ///< the head that is arriving has a Location
    bool m_isHeld = false;
    bool m_isHungUp = false;
};
