#pragma once

#include <QStringList>

#include <functional>

class QMimeData;
class QWidget;

/// Opens the dialog in which a person chooses the text files to attach, over the window of `parent`, and
/// returns at once. `chosen` is told the paths, unless the dialog is cancelled or `parent` is gone.
void openAttachDialog(QWidget *parent, const std::function<void(const QStringList &paths)> &chosen);

/// Those of the files that the dialog would offer, by their names.
QStringList attachableFiles(const QStringList &paths);

/// The paths of the files that were dragged or copied; none if it is something else, such as text or an
/// address on the web.
QStringList filesIn(const QMimeData &data);
