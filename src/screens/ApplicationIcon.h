#pragma once

#include "pages/drawing/Spoken.h"

#include <QIcon>
#include <QWidget>

/// The program's icon in the sizes that a desktop asks for.
QIcon applicationIcon();

/// The program's icon as a picture in a window.
class ApplicationIcon : public QWidget, public Spoken {
    Q_OBJECT

public:
    explicit ApplicationIcon(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QAccessible::Role spokenRole() const override { return QAccessible::Graphic; }
    QString spokenName() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap m_picture; ///< as finely as the screen needed it last
};
