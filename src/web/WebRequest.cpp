#include "web/WebRequest.h"

HttpRequest webRequest(const QUrl &url, std::chrono::milliseconds idleTimeout) {
    HttpRequest request;
    request.url = url;
    request.headers.emplaceBack("User-Agent",
                                "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/605.1.15 "
                                "(KHTML, like Gecko) Version/17.0 Safari/605.1.15");
    request.idleTimeout = idleTimeout;
    request.redirects = HttpRequest::Redirects::areFollowed;
    request.compression = HttpRequest::Compression::isAccepted;
    return request;
}
