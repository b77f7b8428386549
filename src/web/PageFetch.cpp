#include "web/PageFetch.h"

#include "platform/OffMainThread.h"
#include "records/Characters.h"
#include "web/ReadableText.h"
#include "web/WebRequest.h"
#include "web/WebURL.h"

namespace {

constexpr QStringView notListed = u"That page was not in the search results, so it was not opened.";
constexpr QStringView notOpened = u"That page could not be opened.";
constexpr QStringView notAllowed = u"That address is not allowed.";
constexpr QStringView notReadable = u"That page had no readable text.";

bool isSafe(const QUrl &url, const urlSafety::Resolver &resolver) {
    try {
        urlSafety::check(url, resolver);
        return true;
    } catch (const urlSafety::Blocked &) {
        return false;
    }
}

/// The first characters as a reader counts them, of which each may be a letter with marks without end.
QStringView beginningOf(const QString &text) {
    constexpr qsizetype mostCharacters = 6'000;
    constexpr qsizetype mostCodeUnits = 4 * mostCharacters;
    QStringView beginning = firstCharacters(text, mostCharacters).left(mostCodeUnits);
    if (!beginning.isEmpty() && beginning.back().isHighSurrogate())
        beginning.chop(1);
    return beginning;
}

} // namespace

QString textOfPage(const QByteArray &body) {
    const QString html = body.isValidUtf8() ? QString::fromUtf8(body) : QString::fromLatin1(body);
    const QString text = plainText(html);
    return text.isEmpty() ? notReadable.toString() : beginningOf(text).toString();
}

Task<QString> fetchPage(QString url, QSet<QString> allowed, std::stop_token stop) {
    return fetchPage(url, allowed, urlSafety::resolve, stop);
}

Task<QString> fetchPage(QString url, QSet<QString> allowed, urlSafety::Resolver resolver,
                        std::stop_token stop) {
    if (!allowed.contains(normalizeFetchURL(url)))
        co_return notListed.toString();
    const std::optional<QUrl> address = parseURL(url);
    if (!address)
        co_return notOpened.toString();
    const std::function<bool()> check = [address, resolver] { return isSafe(*address, resolver); };
    const bool mayBeOpened = co_await offMainThread(check, stop);
    if (!mayBeOpened)
        co_return notAllowed.toString();
    HttpResponse response;
    try {
        response = co_await fetch(pageRequest(*address), stop);
    } catch (const HttpError &) {
        co_return notOpened.toString();
    }
    if (response.status < 200 || response.status > 299)
        co_return notOpened.toString();
    const std::function<QString()> read = [body = response.body] { return textOfPage(body); };
    co_return co_await offMainThread(read, stop);
}
