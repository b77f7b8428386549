#include "platform/HttpTransfer.h"

#include "platform/NetworkState.h"
#include "platform/PrivateSocket.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <curl/curl.h>

static_assert(sizeof(curl_off_t) == sizeof(qint64));

namespace {

constexpr int firstFinalStatus = 200;
constexpr int firstRedirect = 300;
constexpr int firstRefusal = 400;
constexpr long mostRedirects = 20;

/// How many more bytes may come than the receiver is given. Without such a limit a server could go on for
/// ever with heads, bodies of redirects, and compressed blocks of nothing.
constexpr qint64 mostUnread = 1'000'000;

/// The hosts that are never reached through a proxy: the loopback, and whom the environment names.
QByteArray hostsWithoutProxy() {
    QByteArray named = qgetenv("no_proxy");
    if (named.isEmpty())
        named = qgetenv("NO_PROXY");
    // A star counts only where it stands alone.
    return named.trimmed() == "*" ? "*" : "localhost,127.0.0.0/8,::1," + named;
}

curl_socket_t openSocket(void *, curlsocktype, curl_sockaddr *address) {
    return openPrivateSocket(address->family, address->socktype, address->protocol);
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

HttpTransfer::Moment HttpTransfer::deadline() const {
    const Moment ofSilence = m_isHeld ? Moment::max() : m_lastActivity + m_request.idleTimeout;
    return m_request.wholeTimeout ? std::min(ofSilence, m_start + *m_request.wholeTimeout) : ofSilence;
}

void HttpTransfer::setOptions() {
    curl_easy_setopt(m_handle, CURLOPT_PRIVATE, this);
    curl_easy_setopt(m_handle, CURLOPT_NOSIGNAL, 1L);
    // A name server that doesn't answer must not hold up the end of a request, and all others with it.
    curl_easy_setopt(m_handle, CURLOPT_QUICK_EXIT, 1L);
    // A connection of its own: on one that was kept, a request is sent again when the server hangs up.
    curl_easy_setopt(m_handle, CURLOPT_FRESH_CONNECT, 1L);
    curl_easy_setopt(m_handle, CURLOPT_FORBID_REUSE, 1L);
    // HTTP/2 has nothing to give to a connection with one request, and reads on while it is held back.
    curl_easy_setopt(m_handle, CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
    setRoute();
    setCallbacks();
}

void HttpTransfer::setRoute() {
    curl_easy_setopt(m_handle, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(m_handle, CURLOPT_NOPROXY, hostsWithoutProxy().constData());
    curl_easy_setopt(m_handle, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    if (m_request.redirects == HttpRequest::Redirects::areAnswers)
        return;
    const bool isSecure = m_request.url.scheme() == QLatin1String("https");
    curl_easy_setopt(m_handle, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(m_handle, CURLOPT_HTTPAUTH, CURLAUTH_NONE);
    curl_easy_setopt(m_handle, CURLOPT_MAXREDIRS, mostRedirects);
    curl_easy_setopt(m_handle, CURLOPT_REDIR_PROTOCOLS_STR, isSecure ? "https" : "http,https");
}

void HttpTransfer::setCallbacks() {
    curl_easy_setopt(m_handle, CURLOPT_OPENSOCKETFUNCTION, openSocket);
    curl_easy_setopt(m_handle, CURLOPT_HEADERFUNCTION, takeHeader);
    curl_easy_setopt(m_handle, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(m_handle, CURLOPT_WRITEFUNCTION, takeBody);
    curl_easy_setopt(m_handle, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(m_handle, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(m_handle, CURLOPT_XFERINFOFUNCTION, takeProgress);
    curl_easy_setopt(m_handle, CURLOPT_XFERINFODATA, this);
}

void HttpTransfer::setBody() {
    const bool isPost = m_request.method == "POST";
    curl_easy_setopt(m_handle, CURLOPT_URL, m_request.url.toEncoded().constData());
    if (isPost || !m_request.body.isEmpty()) {
        curl_easy_setopt(m_handle, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(m_request.body.size()));
        curl_easy_setopt(m_handle, CURLOPT_POSTFIELDS, m_request.body.constData());
    }
    // A method that is given by its name stays the same wherever the request is sent on to.
    if (!isPost)
        curl_easy_setopt(m_handle, CURLOPT_CUSTOMREQUEST, m_request.method.constData());
    if (m_request.compression == HttpRequest::Compression::isAccepted)
        curl_easy_setopt(m_handle, CURLOPT_ACCEPT_ENCODING, "");
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
    transfer.m_received += static_cast<qint64>(length);
    QByteArrayView line(bytes, static_cast<qsizetype>(length));
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    transfer.takeHeaderLine(line);
    return transfer.m_isHungUp ? 0 : length;
}

void HttpTransfer::takeHeaderLine(QByteArrayView line) {
    constexpr QByteArrayView location = "location:";
    m_lastActivity = std::chrono::steady_clock::now();
    if (line.startsWith("HTTP/"))
        m_leadsElsewhere = false;
    if (line.first(std::min(line.size(), location.size())).compare(location, Qt::CaseInsensitive) == 0)
        m_leadsElsewhere = m_leadsElsewhere || !line.sliced(location.size()).trimmed().isEmpty();
    if (!line.isEmpty())
        return;
    long status = 0;
    curl_easy_getinfo(m_handle, CURLINFO_RESPONSE_CODE, &status);
    const bool isFollowed = m_request.redirects == HttpRequest::Redirects::areFollowed && m_leadsElsewhere &&
                            status >= firstRedirect && status < firstRefusal;
    if (status >= firstFinalStatus && !isFollowed)
        m_isHungUp = m_receiver->head(static_cast<int>(status)) == HttpReceiver::Next::hangUp;
}

size_t HttpTransfer::takeBody(char *bytes, size_t size, size_t count, void *self) {
    auto &transfer = *static_cast<HttpTransfer *>(self);
    const size_t length = size * count;
    const auto next = transfer.m_receiver->bytes(QByteArray(bytes, static_cast<qsizetype>(length)));
    transfer.m_isHungUp = next == HttpReceiver::Next::hangUp;
    transfer.m_isHeld = next == HttpReceiver::Next::hold;
    if (transfer.m_isHeld)
        return CURL_WRITEFUNC_PAUSE;
    transfer.m_read += static_cast<qint64>(length);
    return transfer.m_isHungUp ? 0 : length;
}

int HttpTransfer::takeProgress(void *self, qint64, qint64 down, qint64, qint64 up) {
    auto &transfer = *static_cast<HttpTransfer *>(self);
    if (std::exchange(transfer.m_moved, down + up) != down + up)
        transfer.m_lastActivity = std::chrono::steady_clock::now();
    // Each answer on the way counts from nothing.
    const qint64 before = std::exchange(transfer.m_down, down);
    transfer.m_received += down < before ? down : down - before;
    return transfer.isTooMuchUnread() ? 1 : 0;
}

bool HttpTransfer::isTooMuchUnread() const {
    return m_received - m_read > mostUnread;
}

void HttpTransfer::goOn() {
    if (!std::exchange(m_isHeld, false))
        return;
    m_lastActivity = std::chrono::steady_clock::now();
    // Gives the receiver the piece that it held back, and may be told to hold again.
    curl_easy_pause(m_handle, CURLPAUSE_CONT);
}

HttpError::Reason HttpTransfer::reasonOf(int code) const {
    switch (code) {
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
        return HttpError::Reason::lost;
    case CURLE_COULDNT_CONNECT:
        return reasonOfNoConnection();
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return hasNetwork() ? HttpError::Reason::unknownHost : HttpError::Reason::notConnected;
    case CURLE_ABORTED_BY_CALLBACK:
        return HttpError::Reason::tooLong;
    case CURLE_OPERATION_TIMEDOUT:
        return HttpError::Reason::timedOut;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
        return HttpError::Reason::insecure;
    case CURLE_URL_MALFORMAT:
        return HttpError::Reason::badAddress;
    case CURLE_UNSUPPORTED_PROTOCOL:
        return m_leadsElsewhere || !wasSent() ? HttpError::Reason::badAddress : HttpError::Reason::badAnswer;
    case CURLE_TOO_MANY_REDIRECTS:
        return HttpError::Reason::tooManyRedirects;
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return HttpError::Reason::badAnswer;
    default:
        return HttpError::Reason::other;
    }
}

bool HttpTransfer::wasSent() const {
    long bytes = 0;
    curl_easy_getinfo(m_handle, CURLINFO_REQUEST_SIZE, &bytes);
    return bytes > 0;
}

HttpError::Reason HttpTransfer::reasonOfNoConnection() const {
    long reason = 0;
    curl_easy_getinfo(m_handle, CURLINFO_OS_ERRNO, &reason);
    switch (reason) {
    case ENETUNREACH:
    case ENETDOWN:
        return HttpError::Reason::notConnected;
    case ETIMEDOUT:
        return HttpError::Reason::timedOut;
    default:
        return HttpError::Reason::unreachable;
    }
}
