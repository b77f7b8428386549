#pragma once

#include <QStringView>

/// How many UTF-16 units at the beginning of `text` are numeric characters: those to which Unicode gives
/// a numeric type, so digits of every script, fractions, circled numbers and the ideographs of numbers.
qsizetype numericPrefix(QStringView text);
