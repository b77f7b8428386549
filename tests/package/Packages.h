#pragma once

#include <QString>

/// Where the package of that name lies in the build tree.
inline QString packageFile(const QString &name) {
    return QStringLiteral(BUILD_TREE "/packages/%1_" PACKAGE_VERSION "_" DEBIAN_ARCHITECTURE ".deb")
        .arg(name);
}

/// A file that the build has made for the packages.
inline QString madeFile(const QString &name) {
    return QStringLiteral(BUILD_TREE "/resources/package/") + name;
}
