#pragma once

#include "screens/RowPart.h"

class BorderlessButton;
class Look;

/// Says that no page could be made of a reply, and offers to try again.
class PageFailedLine : public RowPart {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit PageFailedLine(const Look &look, QWidget *parent = nullptr);

    int layIn(int width) override;
    QList<QWidget *> stops() const override;

Q_SIGNALS:
    void retried();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Look &m_look;
    BorderlessButton *m_retry;
};
