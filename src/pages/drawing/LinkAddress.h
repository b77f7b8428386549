#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/// The address that a link leads to if it is one to follow: of a web page or to write to. A model writes
/// links, so that nothing else is ever opened: no file, no command of another program, no web address with a
/// name before its host, which would look like the host, and no letter with more in it than whom it is for.
std::optional<QUrl> linkAddress(const QString &link);

/// The address for a person to judge, in at most about 500 characters: as it is sent, so that nothing in it
/// looks like something else, its host in full, and the middle left out of what follows if that is long.
QString shownAddress(const QUrl &address);
