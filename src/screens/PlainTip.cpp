#include "screens/PlainTip.h"

#include "records/Characters.h"

#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype longestTip = 300;
}

QString plainTip(const QString &text) {
    if (text.isEmpty())
        return {};
    const QStringView kept = firstCharacters(text, longestTip);
    return Qt::convertFromPlainText(kept.size() == text.size() ? text : kept.toString() + u'…');
}
