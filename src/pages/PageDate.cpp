#include "pages/PageDate.h"

#include <QLocale>

using namespace Qt::StringLiterals;

QString shownDate(const QDateTime &date) {
    return QLocale::c().toString(date.toLocalTime(), u"MMM d, yyyy"_s);
}

QString shownDateAndTime(const QDateTime &date) {
    return QLocale::c().toString(date.toLocalTime(), u"MMM d, yyyy 'at' h:mm AP"_s);
}
