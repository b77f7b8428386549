#include "pages/drawing/Typefaces.h"

#include <QFontDatabase>

using namespace Qt::StringLiterals;

namespace {

QString firstInstalled(const QString &wanted, const QString &otherwise) {
    return QFontDatabase::hasFamily(wanted) ? wanted : otherwise;
}

} // namespace

const QString &sansFamily() {
    static const QString family =
        firstInstalled(u"Inter"_s, QFontDatabase::systemFont(QFontDatabase::GeneralFont).family());
    return family;
}

const QString &serifFamily() {
    static const QString family = firstInstalled(u"Noto Serif"_s, u"serif"_s);
    return family;
}

const QString &monospacedFamily() {
    static const QString family =
        firstInstalled(u"JetBrains Mono"_s, QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    return family;
}

QStringList withEmoji(const QString &family) {
    static const QString emoji = firstInstalled(u"Noto Color Emoji"_s, QString());
    return emoji.isEmpty() ? QStringList{family} : QStringList{family, emoji};
}
