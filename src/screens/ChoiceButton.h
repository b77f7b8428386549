#pragma once

#include "screens/LookButton.h"

/// One of several buttons below the same parent of which one is chosen. Tab stops at the chosen one, and
/// the arrow keys go on from there.
class ChoiceButton : public LookButton {
    Q_OBJECT

public:
    ChoiceButton(const Look &look, const QString &name, QWidget *parent = nullptr);
};
