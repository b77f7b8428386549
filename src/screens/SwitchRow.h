#pragma once

#include <QWidget>

class CheckToggle;
class Look;

/// A switch with its name before it; a click on the name turns it too.
class SwitchRow : public QWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    SwitchRow(const Look &look, const QString &name, QWidget *parent = nullptr);

    CheckToggle *toggle() const { return m_toggle; }

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    CheckToggle *m_toggle;
};
