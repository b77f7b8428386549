#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// The text that a character reference of HTML stands for, from the ampersand to the semicolon: a number,
/// or one of the names that people write. Nothing for any other name. Any thread.
std::optional<QString> htmlEntity(QStringView reference);
