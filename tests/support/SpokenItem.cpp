#include "support/SpokenItem.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {

using Sounds = QSet<QString>;

bool isPlace(const SpokenItem &item) {
    return !item.name.isEmpty() && !item.items.isEmpty();
}

QString shown(const SpokenItem &item) {
    return u"%1 \"%2\""_s.arg(item.role, item.name.left(60));
}

class Inspection {
public:
    void visit(const SpokenItem &item, const SpokenItem &place, Sounds &heard) {
        if ((item.isControl || item.takesFocus) && item.name.trimmed().isEmpty())
            faults.append(u"%1 in %2 has no name"_s.arg(shown(item), shown(place)));
        const QString sound = item.role + u'\n' + item.name + u'\n' + item.description;
        if (item.isControl && heard.contains(sound))
            faults.append(u"%1 in %2 sounds like another one"_s.arg(shown(item), shown(place)));
        if (item.isControl)
            heard.insert(sound);
        if (isPlace(item))
            return enter(item);
        for (const SpokenItem &inner : item.items)
            visit(inner, place, heard);
    }

    void enter(const SpokenItem &place) {
        Sounds heard;
        for (const SpokenItem &item : place.items)
            visit(item, place, heard);
    }

    QStringList faults;
};

} // namespace

QStringList faultsOf(const SpokenItem &window) {
    Inspection inspection;
    inspection.enter(window);
    return inspection.faults;
}
