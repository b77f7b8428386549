#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// What assistive technology finds in a window: an object, and what is in it. A plain value, whichever way
/// it was asked for.
struct SpokenItem {
    QString role;
    QString name;
    QString description;
    bool isControl = false; ///< something to press, to choose or to write in
    bool takesFocus = false;
    QList<SpokenItem> items;
};

/// What breaks the rules that hold in every window, a sentence for each; nothing where all is well:
///
/// - A control, and whatever else takes the keyboard, has a name.
/// - No two controls of one place sound alike: of what has one role, the name or the description differs.
///   A place is what has a name itself and holds further things.
QStringList faultsOf(const SpokenItem &window);
