#include "screens/LocalFiles.h"

#include <QMimeData>
#include <QUrl>

QStringList filesIn(const QMimeData &data) {
    QStringList files;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    return files;
}
