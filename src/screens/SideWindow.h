#pragma once

#include <QWidget>

class Look;

/// The frame of a window beside the main one: one thing to see, on the theme's background.
class SideWindow : public QWidget {
    Q_OBJECT

public:
    /// Takes `content`. `look` must outlive this object.
    SideWindow(const Look &look, const QString &title, QWidget *content);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Look &m_look;
};
