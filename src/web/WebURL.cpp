#include "web/WebURL.h"

#include <algorithm>

namespace {

/// What stands between "//" and the path, or what may be taken for that.
QStringView authorityOf(QStringView text) {
    constexpr QStringView slashes = u"//";
    const qsizetype start = text.indexOf(slashes);
    if (start < 0)
        return {};
    const QStringView rest = text.sliced(start + slashes.size());
    const auto end = std::find_if(rest.begin(), rest.end(),
                                  [](QChar each) { return each == u'/' || each == u'?' || each == u'#'; });
    return rest.first(end - rest.begin());
}

/// Whether more combining marks follow one another than a label of a host has room for, which is 63 bytes
/// long (RFC 1035). QUrl refuses it, too, but in a time that grows with the square of the marks.
bool hasTooManyMarks(QStringView host) {
    constexpr int mostMarks = 63;
    int marks = 0;
    for (const uint character : QUrl::fromPercentEncoding(host.toUtf8()).toUcs4()) {
        marks = QChar::combiningClass(character) == 0 ? 0 : marks + 1;
        if (marks > mostMarks)
            return true;
    }
    return false;
}

bool isFarTooLong(QStringView text) {
    constexpr qsizetype longestAuthority = 4'000;
    const QStringView authority = authorityOf(text);
    return authority.size() > longestAuthority ||
           hasTooManyMarks(authority.sliced(authority.indexOf(u'@') + 1));
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
