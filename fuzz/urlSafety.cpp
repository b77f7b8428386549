// Judges an address. What passes as a literal must be public, what passes by its name must be asked for by
// the very name to which libcurl connects; and a normal form must be its own.

#include "web/URLSafety.h"

#include "web/WebURL.h"

#include <cstdlib>
#include <memory>
#include <optional>

#include <curl/curl.h>

namespace {

QString hostForRequest(const QUrl &url) {
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> parsed(curl_url(), curl_url_cleanup);
    char *host = nullptr;
    if (curl_url_set(parsed.get(), CURLUPART_URL, url.toEncoded().constData(), 0) != CURLUE_OK ||
        curl_url_get(parsed.get(), CURLUPART_HOST, &host, 0) != CURLUE_OK)
        return {};
    const QString text = QString::fromUtf8(host);
    curl_free(host);
    return text.startsWith(u'[') ? text.sliced(1, text.size() - 2) : text;
}

void judge(const QUrl &url) {
    std::optional<QString> asked;
    try {
        urlSafety::check(url, [&](const QString &host) {
            asked = host.contains(u':') ? host.section(u'%', 0, 0) : host;
            return QList{IPAddress(QByteArray("\xCB\x00\x71\x07", 4))};
        });
    } catch (const urlSafety::Blocked &) {
        return;
    }
    const QString host = hostForRequest(url);
    if (host.isEmpty())
        return;
    if (asked ? *asked != host : IPAddress::parse(host).value().isBlocked())
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (const auto url = parseURL(text))
        judge(*url);
    const QString normal = normalizeFetchURL(text);
    if (parseURL(text) && !parseURL(normal) && !normal.isEmpty())
        std::abort();
    return 0;
}
