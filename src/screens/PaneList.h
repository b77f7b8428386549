#pragma once

#include "pages/drawing/Focus.h"
#include "screens/SettingsPane.h"

#include <QListWidget>

class Look;

/// The list of the settings' panes, one of which is chosen.
class PaneList : public QListWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit PaneList(const Look &look, QWidget *parent = nullptr);

    SettingsPane pane() const;
    void setPane(SettingsPane pane);

    /// True while the focus is here because of a key.
    bool showsFocus() const { return m_keyFocus.isByKey() && hasFocus(); }

Q_SIGNALS:
    void paneChanged(SettingsPane pane);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    /// A screen reader chooses a row without going to it, and may take its choice back: there is always a
    /// chosen pane, and it is the one that shows.
    void followSelection();

    KeyFocus m_keyFocus;
};
