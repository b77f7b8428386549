#include "web/WebRequest.h"

namespace {

constexpr qsizetype longestPage = 2'000'000;

HttpRequest webRequest(const QUrl &url, std::chrono::milliseconds idleTimeout) {
    HttpRequest request;
    request.url = url;
    request.headers.emplaceBack("User-Agent",
                                "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/605.1.15 "
                                "(KHTML, like Gecko) Version/17.0 Safari/605.1.15");
    request.idleTimeout = idleTimeout;
    request.longestBody = longestPage;
    request.redirects = HttpRequest::Redirects::areFollowed;
    request.compression = HttpRequest::Compression::isAccepted;
    return request;
}

} // namespace

HttpRequest searchRequest(const QString &query, const QUrl &address) {
    // What may stand in a query (RFC 3986) beside letters and digits, but for & + = ?.
    constexpr const char *kept = "!$'()*,;:@/";
    HttpRequest request = webRequest(address, std::chrono::seconds(15));
    request.method = "POST";
    request.headers.emplaceBack("Content-Type", "application/x-www-form-urlencoded");
    request.body = "q=" + QUrl::toPercentEncoding(query, kept);
    request.reading = HttpRequest::Reading::ofEveryStatus;
    return request;
}

HttpRequest pageRequest(const QUrl &url) {
    HttpRequest request = webRequest(url, std::chrono::seconds(10));
    request.longBody = HttpRequest::LongBody::isCut;
    return request;
}
