#pragma once

#include "screens/RowButton.h"

/// A line of text in a row of a list that can be pressed; it is cut at its end where it is too long. What it
/// says may come from anywhere.
class LineButton : public RowButton {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    LineButton(const Look &look, const QString &line, QWidget *parent = nullptr);

    /// The line's, with style::rowOutset on both sides for the ring.
    QSize sizeHint() const override;

    QString spokenName() const override { return m_line; }

protected:
    /// How far from the left the text begins, and how much of the right is left free.
    virtual int textLeft() const;
    virtual int textRight() const;
    QColor ink() const;
    void drawLine(QPainter &painter) const;

    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    QString shownLine() const;

    const QString m_line;
};
