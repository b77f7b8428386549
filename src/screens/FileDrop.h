#pragma once

#include <QObject>
#include <QStringList>

class QDropEvent;
class QWidget;

/// Takes the files that are dropped on a widget, as far as any of them can be attached to a message. Whoever
/// drags a file there keeps it.
class FileDrop : public QObject {
    Q_OBJECT

public:
    /// The widget owns this object.
    explicit FileDrop(QWidget *target);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// Such files have come over the widget, or gone.
    void hovered(bool isHovered);
    /// The paths of all files that were dropped.
    void dropped(const QStringList &paths);

private:
    void enter(QDropEvent &event);
    void drop(QDropEvent &event);
};

/// Those of the files that can be attached to a message, by their names and contents.
QStringList attachableFiles(const QStringList &paths);
