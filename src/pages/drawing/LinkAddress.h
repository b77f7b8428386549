#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/// The address that a link leads to if it is one to follow: of a web page or to write to. A model writes
/// links, so that nothing else is ever opened: no file, no command of another program.
std::optional<QUrl> linkAddress(const QString &link);
