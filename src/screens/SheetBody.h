#pragma once

#include <QScrollArea>

/// The middle of a sheet with more fields than a low window has room for: it takes the height that its
/// content needs, and scrolls where there is less.
class SheetBody : public QScrollArea {
    Q_OBJECT

public:
    /// Takes `content`.
    explicit SheetBody(QWidget *content, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, 0}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
};
