#include "screens/ChoiceButton.h"

ChoiceButton::ChoiceButton(const Look &look, const QString &name, QWidget *parent)
    : LookButton(look, name, parent) {
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::ClickFocus);
    connect(this, &QAbstractButton::toggled, this,
            [this](bool isChosen) { setFocusPolicy(isChosen ? Qt::StrongFocus : Qt::ClickFocus); });
}
