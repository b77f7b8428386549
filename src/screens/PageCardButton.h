#pragma once

#include "screens/RowButton.h"

/// A sheet of paper in small, and below it a page's title.
class PageCardButton : public RowButton {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    PageCardButton(const Look &look, const QString &title, QWidget *parent = nullptr);

    /// As wide as the sheet, or as the title up to style::cardMaximumWidth, with style::rowOutset on every
    /// side for the ring.
    QSize sizeHint() const override;

    QString spokenName() const override { return m_title; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void drawSheet(QPainter &painter) const;

    const QString m_title;
};
