#include "web/WebURL.h"

#include <algorithm>

namespace {

/// The length of what stands between "//" and the path, or what may be taken for that.
qsizetype authorityLength(QStringView text) {
    constexpr QStringView slashes = u"//";
    const qsizetype start = text.indexOf(slashes);
    if (start < 0)
        return 0;
    const QStringView rest = text.sliced(start + slashes.size());
    return std::find_if(rest.begin(), rest.end(),
                        [](QChar each) { return each == u'/' || each == u'?' || each == u'#'; }) -
           rest.begin();
}

bool isFarTooLong(QStringView text) {
    // A host has 255 bytes; QUrl's time for one grows with the square of its combining marks.
    constexpr qsizetype longestAuthority = 4'000;
    return authorityLength(text) > longestAuthority;
}

/// Whether the text that QUrl makes of `url` is one too. Behind the "%" of an IPv6 address it takes what it
/// refuses there, and in the text each character may have become nine.
bool canBeReadAgain(const QUrl &url) {
    const QByteArray encoded = url.toEncoded();
    return !isFarTooLong(QString::fromLatin1(encoded)) && QUrl::fromEncoded(encoded).isValid();
}

} // namespace

std::optional<QUrl> parseURL(const QString &text) {
    if (isFarTooLong(text))
        return std::nullopt;
    const QUrl url(text);
    return url.isValid() && canBeReadAgain(url) ? std::optional(url) : std::nullopt;
}

QString normalizeFetchURL(const QString &text) {
    const std::optional<QUrl> url = parseURL(text);
    if (!url)
        return text;
    QString normalized = url->toString(QUrl::FullyEncoded | QUrl::RemoveFragment);
    if (normalized.endsWith(u'/'))
        normalized.chop(1);
    return normalized;
}
