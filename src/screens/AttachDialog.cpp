#include "screens/AttachDialog.h"

#include "conversation/Attachments.h"

#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

QString documentsFolder() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

} // namespace

void openAttachDialog(QWidget *parent, const std::function<void(const QStringList &paths)> &chosen) {
    auto *dialog = new QFileDialog(parent, u"Attach"_s);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // Where the person hasn't been anywhere yet, a dialog begins where the program was started.
    if (dialog->directory() == QDir::current())
        dialog->setDirectory(documentsFolder());
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setLabelText(QFileDialog::Accept, u"Attach"_s);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setNameFilter(u"Text files (%1)"_s.arg(attachmentNamePatterns().join(u' ')));
    QObject::connect(dialog, &QFileDialog::filesSelected, parent, chosen);
    dialog->open();
}
