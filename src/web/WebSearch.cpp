#include "web/WebSearch.h"

#include "platform/OffMainThread.h"
#include "records/Options.h"
#include "web/SearchResults.h"
#include "web/WebRequest.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr int statusForRobots = 202;

SearchOutcome failedSearch() {
    return {.text = u"Search is temporarily unavailable."_s, .sources = {}};
}

HttpRequest searchRequest(const QString &query, const QUrl &address) {
    // What may stand in a query (RFC 3986) beside letters and digits, but for & + = ?.
    constexpr const char *kept = "!$'()*,;:@/";
    HttpRequest request = webRequest(address, std::chrono::seconds(15));
    request.method = "POST";
    request.headers.emplaceBack("Content-Type", "application/x-www-form-urlencoded");
    request.body = "q=" + QUrl::toPercentEncoding(query, kept);
    request.reading = HttpRequest::Reading::ofEveryStatus;
    request.longestBody = 2'000'000;
    return request;
}

bool asksForAPerson(const QString &page) {
    return page.contains(u"captcha"_s, Qt::CaseInsensitive) ||
           page.contains(u"anomaly-modal"_s, Qt::CaseInsensitive);
}

QString textOf(const QList<SearchSource> &sources) {
    QStringList entries;
    for (const SearchSource &source : sources)
        entries.append(u"["_s + QString::number(source.id) + u"] "_s + source.title + u'\n' + source.url +
                       u'\n' + source.snippet);
    return entries.join(u"\n\n"_s);
}

SearchOutcome outcomeOf(const QByteArray &body) {
    if (!body.isValidUtf8())
        return failedSearch();
    const QString page = QString::fromUtf8(body);
    if (asksForAPerson(page))
        return failedSearch();
    const QList<SearchSource> sources = parseSearchResults(page);
    return sources.isEmpty() ? failedSearch() : SearchOutcome{textOf(sources), sources};
}

} // namespace

QUrl searchURL() {
    return QUrl(optionValue(u"searchURL"_s).value_or(QStringLiteral(OSTRELIN_SEARCH_URL)));
}

Task<SearchOutcome> webSearch(QString query, QUrl address, std::stop_token stop) {
    HttpResponse response;
    try {
        response = co_await fetch(searchRequest(query, address), stop);
    } catch (const HttpError &) {
        co_return failedSearch();
    }
    if (response.status == statusForRobots)
        co_return failedSearch();
    const std::function<SearchOutcome()> read = [body = response.body] { return outcomeOf(body); };
    co_return co_await offMainThread(read, stop);
}
