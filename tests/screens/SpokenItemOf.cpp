#include "screens/SpokenItemOf.h"

#include <QMetaEnum>

bool isControl(QAccessibleInterface *object) {
    const QAccessible::State state = object->state();
    switch (object->role()) {
    case QAccessible::Button:
    case QAccessible::ButtonDropDown:
    case QAccessible::ButtonMenu:
    case QAccessible::CheckBox:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::Link:
    case QAccessible::MenuItem:
    case QAccessible::PageTab:
    case QAccessible::RadioButton:
    case QAccessible::Slider:
    case QAccessible::SpinBox:
        return true;
    case QAccessible::ListItem:
        // Lists of a text and the rows of the messages are to be read.
        return state.selectable || state.focusable;
    default:
        return false;
    }
}

SpokenItem spokenItemOf(QAccessibleInterface *object) {
    const QAccessible::Role role = object->role();
    SpokenItem item{.role = QString::fromLatin1(QMetaEnum::fromType<QAccessible::Role>().valueToKey(role)),
                    .name = object->text(QAccessible::Name),
                    .description = object->text(QAccessible::Description),
                    .isControl = isControl(object),
                    .takesFocus = object->state().focusable == 1};
    for (int index = 0; index < object->childCount(); ++index) {
        QAccessibleInterface *child = object->child(index);
        if (child && !child->state().invisible)
            item.items.append(spokenItemOf(child));
    }
    return item;
}
