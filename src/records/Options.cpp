#include "records/Options.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

std::optional<QString> optionValue(const QString &name) {
    return optionValue(name, QCoreApplication::arguments(), QProcessEnvironment::systemEnvironment());
}

std::optional<QString> optionValue(const QString &name, const QStringList &arguments,
                                   const QProcessEnvironment &environment) {
    const QStringList forms{name, u"-"_s + name, u"--"_s + name};
    for (qsizetype index = 0; index + 1 < arguments.size(); ++index) {
        if (forms.contains(arguments[index]))
            return arguments[index + 1];
    }
    const QString variable = u"OSTRELIN_"_s + name.toUpper();
    if (environment.contains(variable))
        return environment.value(variable);
    return std::nullopt;
}
