#include "pages/drawing/LinkAddress.h"

using namespace Qt::StringLiterals;

std::optional<QUrl> linkAddress(const QString &link) {
    if (link.isEmpty())
        return std::nullopt;
    const QUrl url(link.trimmed());
    const bool isPage = (url.scheme() == u"https"_s || url.scheme() == u"http"_s) && !url.host().isEmpty();
    const bool isLetter = url.scheme() == u"mailto"_s && !url.path().isEmpty();
    return url.isValid() && (isPage || isLetter) ? std::optional(url) : std::nullopt;
}
