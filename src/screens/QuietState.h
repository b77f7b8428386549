#pragma once

#include "screens/Icon.h"

#include <QWidget>

class Look;

/// What stands where there is nothing yet: a symbol that keeps back, and a sentence, in the middle.
class QuietState : public QWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    QuietState(const Look &look, Icon icon, const QString &sentence, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Look &m_look;
    const Icon m_icon;
    QWidget *m_place; ///< of the symbol
};
