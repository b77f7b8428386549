#pragma once

#include "screens/LookButton.h"

/// One of several buttons below the same parent of which one is chosen. Tab stops at the chosen one, and
/// the arrow keys go on from there.
class ChoiceButton : public LookButton {
    Q_OBJECT

public:
    ChoiceButton(const Look &look, const QString &name, QWidget *parent = nullptr);

    /// Shows a choice that comes from elsewhere.
    void setChosen();

Q_SIGNALS:
    /// The person has chosen this one: by mouse, by keys, or through a screen reader.
    void chosen();

private:
    void takeState(bool isChosen);

    bool m_isFollowing = false;
};
