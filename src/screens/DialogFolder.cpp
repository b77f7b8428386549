#include "screens/DialogFolder.h"

#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

namespace {

QString documentsFolder() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

} // namespace

void beginInDocuments(QFileDialog &dialog) {
    // Where the person hasn't been anywhere yet, a dialog begins where the program was started.
    if (dialog.directory() == QDir::current())
        dialog.setDirectory(documentsFolder());
}
