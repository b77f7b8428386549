#include "records/CatalogSource.h"

#include "platform/AtomicFile.h"
#include "platform/Http.h"
#include "records/Coder.h"
#include "records/Options.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A catalog from outside may be anything. What is reckoned with later must be in the range of a disk, and
/// what the engine and the disk are given must be what they can take.
bool isUsable(const ModelTier &tier) {
    constexpr qint64 mostBytes = 1'000'000'000'000'000;
    constexpr qint64 mostTokens = 100'000'000;
    return tier.sizeBytes >= 0 && tier.sizeBytes <= mostBytes && tier.minRAMBytes >= 0 &&
           tier.contextLength >= 1 && tier.contextLength <= mostTokens && isModelFilename(tier.filename);
}

bool isUsable(const Catalog &catalog) {
    return !catalog.tiers.isEmpty() && std::all_of(catalog.tiers.begin(), catalog.tiers.end(),
                                                   [](const ModelTier &tier) { return isUsable(tier); });
}

} // namespace

Catalog loadBuiltInCatalog(const QString &resourcesFolder) {
    QString path = resourcesFolder + u"/catalog.json"_s;
    if (!QFileInfo::exists(path))
        path = resourcesFolder + u"/Resources/catalog.json"_s;
    try {
        return decodeRecord<Catalog>(readFile(path).value_or(QByteArray()));
    } catch (const DecodingError &) {
        return {};
    }
}

QUrl catalogURL() {
    return QUrl(optionValue(u"catalogURL"_s).value_or(QStringLiteral(OSTRELIN_CATALOG_URL)));
}

Task<std::optional<Catalog>> fetchRemoteCatalog(QUrl url, std::stop_token stop) {
    HttpRequest request;
    request.url = url;
    // The start waits for it, so that a server which trickles is no better than one which is silent.
    request.wholeTimeout = std::chrono::seconds(3);
    request.longestBody = 1'000'000;
    request.redirects = HttpRequest::Redirects::areFollowed;
    try {
        const HttpResponse response = co_await fetch(request, stop);
        if (response.status < 200 || response.status > 299)
            co_return std::nullopt;
        const auto catalog = decodeRecord<Catalog>(response.body);
        co_return isUsable(catalog) ? std::optional(catalog) : std::nullopt;
    } catch (const HttpError &) {
        co_return std::nullopt;
    } catch (const DecodingError &) {
        co_return std::nullopt;
    }
}
