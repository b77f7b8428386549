#pragma once

#include <QStringList>

#include <functional>

class QWidget;

/// Opens the dialog in which a person chooses the text files to attach, over the window of `parent`, and
/// returns at once. It begins in the folder where the person was last, at first in that of their documents.
/// `chosen` is told the paths, unless the dialog is cancelled or `parent` is gone.
void openAttachDialog(QWidget *parent, const std::function<void(const QStringList &paths)> &chosen);
