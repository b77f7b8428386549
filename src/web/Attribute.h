#pragma once

#include <QStringView>

#include <optional>

/// Where an attribute stands in a page: its name, an equals sign with white space around it or not, its
/// value.
struct Attribute {
    qsizetype start; ///< of the name
    qsizetype value; ///< of what follows the equals sign and the white space behind that
};

/// The first place from `from` on where `name`, in lower case, is given a value, be it in a tag or not; a
/// longer name that ends so counts. `page` is in lower case. Any thread.
std::optional<Attribute> findAttribute(QStringView page, QStringView name, qsizetype from);
