#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/// URLs as strangers write them. In time that grows with the text alone. Any thread.

/// The URL in `text`, absolute or relative; what may not stand in one is percent-encoded, but for the host.
/// Nothing if it is empty or none, can't be read again from its encoded form, or names a place that is far
/// too long to be a host or has more combining marks in a row than one has room for.
std::optional<QUrl> parseURL(const QString &text);

/// The form in which two texts of the same page are equal: with no fragment, scheme and host in lower case,
/// an international name in ASCII, and no slash at the end, one that is; a text that is no URL as it is.
QString normalizeFetchURL(const QString &text);
