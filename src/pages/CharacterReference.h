#pragma once

#include <QString>

/// The character that a reference stands for, as in "&amp;", "&#8211;" or "&#x2013;": by number, or by one
/// of the names that are in common use (HTML, "Named character references"). A zero and what is no
/// character is U+FFFD; another name stays as it is written. Any thread.
QString resolvedReference(const QString &reference);
