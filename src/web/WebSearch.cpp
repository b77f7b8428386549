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
