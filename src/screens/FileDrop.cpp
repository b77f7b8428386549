#include "screens/FileDrop.h"

#include "conversation/Attachments.h"
#include "screens/LocalFiles.h"

#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

#include <algorithm>
#include <iterator>

QStringList attachableFiles(const QStringList &paths) {
    QStringList files;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(files), isAttachable);
    return files;
}

FileDrop::FileDrop(QWidget *target) : QObject(target) {
    target->setAcceptDrops(true);
    target->installEventFilter(this);
}

bool FileDrop::eventFilter(QObject *watched, QEvent *event) {
    switch (event->type()) {
    case QEvent::DragEnter:
        enter(static_cast<QDropEvent &>(*event));
        return true;
    case QEvent::DragLeave:
        Q_EMIT hovered(false);
        return true;
    case QEvent::Drop:
        drop(static_cast<QDropEvent &>(*event));
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

void FileDrop::enter(QDropEvent &event) {
    if (attachableFiles(filesIn(*event.mimeData())).isEmpty())
        return;
    event.setDropAction(Qt::CopyAction);
    event.accept();
    Q_EMIT hovered(true);
}

void FileDrop::drop(QDropEvent &event) {
    Q_EMIT hovered(false);
    event.setDropAction(Qt::CopyAction);
    event.accept();
    Q_EMIT dropped(filesIn(*event.mimeData()));
}
