#include "screens/ChoiceButton.h"

#include <QScopedValueRollback>

ChoiceButton::ChoiceButton(const Look &look, const QString &name, QWidget *parent)
    : LookButton(look, name, parent) {
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::ClickFocus);
    connect(this, &QAbstractButton::toggled, this, &ChoiceButton::takeState);
}

void ChoiceButton::setChosen() {
    const QScopedValueRollback following(m_isFollowing, true);
    setChecked(true);
}

void ChoiceButton::takeState(bool isChosen) {
    setFocusPolicy(isChosen ? Qt::StrongFocus : Qt::ClickFocus);
    // A screen reader chooses without a click.
    if (isChosen && !m_isFollowing)
        Q_EMIT chosen();
}
