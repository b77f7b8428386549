#include "pages/drawing/FigureSentence.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
/// More than anybody listens to at a stretch.
constexpr qsizetype most = 50;
} // namespace

QString figureSentence(const QString &title, qsizetype count,
                       const std::function<QString(qsizetype)> &itemAt) {
    if (count == 0)
        return title;
    QStringList items;
    for (qsizetype index = 0; index < std::min(count, most); ++index)
        items.append(itemAt(index));
    if (count > most)
        items.append(u"and %1 more"_s.arg(count - most));
    return title + u": "_s + items.join(u", "_s);
}
