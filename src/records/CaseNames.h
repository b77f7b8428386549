#pragma once

#include <QString>

#include <optional>
#include <type_traits>

/// The names of an enumeration's cases. An enumeration has them if `caseNames(E)` beside it gives an
/// array of them in declaration order; the name is also the JSON form.

/// The name of a case.
template<typename E, typename = std::enable_if_t<std::is_enum_v<E>>>
QString nameOf(E value) {
    return QStringView(caseNames(value)[static_cast<size_t>(value)]).toString();
}

/// The case of exactly that name; nothing if there is none.
template<typename E, typename = std::enable_if_t<std::is_enum_v<E>>>
std::optional<E> caseNamed(QStringView name) {
    const auto names = caseNames(E{});
    for (size_t index = 0; index < names.size(); ++index) {
        if (names[index] == name)
            return static_cast<E>(index);
    }
    return std::nullopt;
}
