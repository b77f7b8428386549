#pragma once

#include <QStringList>

class QMimeData;

/// The paths of the files that were dragged or copied; none if it is something else, such as text or an
/// address on the web.
QStringList filesIn(const QMimeData &data);
