#pragma once

#include "pages/drawing/Spoken.h"
#include "records/Settings.h"

#include <QWidget>

class Look;
class ThemeSwatch;

/// The row of the six themes, in their order. The arrow keys go from one to the next.
class ThemePicker : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit ThemePicker(const Look &look, QWidget *parent = nullptr);

    void setTheme(Theme theme);
    ThemeSwatch *swatch(Theme theme) const { return m_swatches.at(int(theme)); }

    QAccessible::Role spokenRole() const override { return QAccessible::Grouping; }
    QString spokenName() const override;

Q_SIGNALS:
    /// The person has chosen that theme.
    void picked(Theme theme);

private:
    QList<ThemeSwatch *> m_swatches;
};
