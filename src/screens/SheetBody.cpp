#include "screens/SheetBody.h"

#include <QEvent>
#include <QLayout>
#include <QScrollBar>

SheetBody::SheetBody(QWidget *content, QWidget *parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setWidget(content);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    content->installEventFilter(this);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize SheetBody::sizeHint() const {
    const QSize hint = widget()->sizeHint();
    return {hint.width(), width() > 0 ? heightForWidth(width()) : hint.height()};
}

int SheetBody::heightForWidth(int width) const {
    const QLayout *layout = widget()->layout();
    return layout->hasHeightForWidth() ? layout->totalHeightForWidth(width)
                                       : layout->totalSizeHint().height();
}

void SheetBody::showEvent(QShowEvent *event) {
    // Each time it comes up it begins at its top.
    verticalScrollBar()->setValue(0);
    QScrollArea::showEvent(event);
}

bool SheetBody::eventFilter(QObject *watched, QEvent *event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}
