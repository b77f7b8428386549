#include "screens/SideWindow.h"

#include "screens/ApplicationIcon.h"
#include "screens/Look.h"

#include <QPaintEvent>
#include <QPainter>
#include <QVBoxLayout>

SideWindow::SideWindow(const Look &look, const QString &title, QWidget *content) : m_look(look) {
    setWindowTitle(title);
    setWindowIcon(applicationIcon());
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(content);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void SideWindow::paintEvent(QPaintEvent *event) {
    QPainter(this).fillRect(event->rect(), m_look.palette().background);
}
