#pragma once

#include "screens/Glide.h"
#include "screens/LookButton.h"

/// A switch: a box whose thumb stands at one end while it is off, and at the other, with a check mark,
/// while it is on.
class CheckToggle : public LookButton {
    Q_OBJECT

public:
    /// `name` is what the switch is called aloud; nothing of it is to be seen.
    CheckToggle(const Look &look, const QString &name, QWidget *parent = nullptr);

    /// Shows a state that comes from elsewhere.
    void setOn(bool isOn);

    QSize sizeHint() const override;

    /// The parts of the switch, in this widget's coordinates.
    QRectF box() const;
    QRectF thumb() const;

Q_SIGNALS:
    /// The person has turned the switch: by mouse, by keys, or through a screen reader.
    void turned(bool isOn);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void takeState(bool isOn);

    Glide m_on; ///< 0 for off, 1 for on
    bool m_isFollowing = false;
};
