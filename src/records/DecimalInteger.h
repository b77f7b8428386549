#pragma once

#include <QString>

#include <optional>

/// The number that `text` is: ASCII digits, with a sign before them or none. Nothing for any other text, and
/// for a number that 64 bits don't hold. Any thread.
std::optional<qint64> decimalInteger(const QString &text);
