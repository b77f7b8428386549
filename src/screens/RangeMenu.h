#pragma once

#include "pages/drawing/Spoken.h"
#include "screens/LookButton.h"
#include "screens/SessionRange.h"

class QActionGroup;
class QMenu;

/// The word that tells from when on chats are listed, with a menu of the others.
class RangeMenu : public LookButton, public Spoken {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit RangeMenu(const Look &look, QWidget *parent = nullptr);

    void setRange(SessionRange range);

    QSize sizeHint() const override;
    QAccessible::Role spokenRole() const override { return QAccessible::ButtonMenu; }
    QString spokenName() const override { return text(); }

Q_SIGNALS:
    /// The person has chosen that range.
    void picked(SessionRange range);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void openMenu();

    QMenu *m_menu;
    QActionGroup *m_choices;
};
