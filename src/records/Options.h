#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <optional>

/// A development override: the argument after the first one equal to `name`, "-name" or "--name";
/// failing that, the environment variable "OSTRELIN_" and the name in upper case; else nothing.
/// The arguments are the process's own, its path included.
std::optional<QString> optionValue(const QString &name);

/// The same over the given arguments and environment: the rule itself, without the process.
std::optional<QString> optionValue(const QString &name, const QStringList &arguments,
                                   const QProcessEnvironment &environment);
