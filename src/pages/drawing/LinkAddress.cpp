#include "pages/drawing/LinkAddress.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The most that a host (RFC 1035, 2.3.4) and the address of a person (RFC 5321, 4.5.3.1.3) can have.
constexpr qsizetype longestHost = 253;
constexpr qsizetype longestMailbox = 254;

/// The most that can stand for a host before its letters are turned into ASCII; of a longer one it takes time
/// of its square to say that it is none.
constexpr qsizetype longestAuthority = 1000;

bool hasShortAuthority(QStringView link) {
    const qsizetype slashes = link.indexOf(u"//"_s);
    if (slashes < 0)
        return true;
    const QStringView authority = link.mid(slashes + 2);
    const auto end = std::find_if(authority.begin(), authority.end(),
                                  [](QChar letter) { return u"/?#\\"_s.contains(letter); });
    return std::distance(authority.begin(), end) <= longestAuthority;
}

bool isShort(const QString &part, qsizetype longest) {
    return !part.isEmpty() && part.size() <= longest;
}

bool isPage(const QUrl &url) {
    return (url.scheme() == u"https"_s || url.scheme() == u"http"_s) && !url.authority().contains(u'@') &&
           isShort(url.host(QUrl::FullyEncoded), longestHost);
}

bool isLetter(const QUrl &url) {
    return url.scheme() == u"mailto"_s && url.authority().isEmpty() &&
           isShort(url.path(QUrl::FullyEncoded), longestMailbox);
}

} // namespace

std::optional<QUrl> linkAddress(const QString &link) {
    if (link.isEmpty() || !hasShortAuthority(link))
        return std::nullopt;
    const QUrl url(link.trimmed());
    if (isLetter(url))
        return url.adjusted(QUrl::RemoveQuery | QUrl::RemoveFragment);
    return isPage(url) ? std::optional(url) : std::nullopt;
}

QString shownAddress(const QUrl &address) {
    const QString whole = QString::fromLatin1(address.toEncoded());
    const auto host = address.toEncoded(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment).size();
    if (whole.size() - host <= longestMailbox)
        return whole;
    return whole.first(host + longestMailbox / 2) + u'…' + whole.last(longestMailbox / 2);
}
