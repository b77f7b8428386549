#include "screens/ColumnEdge.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QKeyEvent>
#include <QPainter>

ColumnEdge::ColumnEdge(const Look &look, QSplitter *columns)
    : QSplitterHandle(Qt::Horizontal, columns),
      m_look(look) {
    Spoken::install();
    setFocusPolicy(Qt::TabFocus);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void ColumnEdge::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    if (hasFocus())
        return painter.fillRect(rect(), m_look.palette().accent);
    painter.fillRect(contentsRect(), m_look.palette().sidebar);
    painter.fillRect(contentsRect(), m_look.palette().hairline);
}

void ColumnEdge::resizeEvent(QResizeEvent *event) {
    QSplitterHandle::resizeEvent(event);
    fitMask();
}

void ColumnEdge::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Left)
        Q_EMIT moved(-style::edgeStep);
    else if (event->key() == Qt::Key_Right)
        Q_EMIT moved(style::edgeStep);
    else
        QSplitterHandle::keyPressEvent(event);
}

void ColumnEdge::focusInEvent(QFocusEvent *event) {
    QSplitterHandle::focusInEvent(event);
    fitMask();
}

void ColumnEdge::focusOutEvent(QFocusEvent *event) {
    QSplitterHandle::focusOutEvent(event);
    fitMask();
}

void ColumnEdge::fitMask() {
    // The mouse finds more than the hairline, and only the keyboard makes that be seen.
    if (hasFocus())
        clearMask();
    else
        setMask(contentsRect());
    update();
}
