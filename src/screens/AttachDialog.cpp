#include "screens/AttachDialog.h"

#include "conversation/Attachments.h"
#include "screens/DialogFolder.h"

#include <QFileDialog>

using namespace Qt::StringLiterals;

void openAttachDialog(QWidget *parent, const std::function<void(const QStringList &paths)> &chosen) {
    auto *dialog = new QFileDialog(parent, u"Attach"_s);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    beginInDocuments(*dialog);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setLabelText(QFileDialog::Accept, u"Attach"_s);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setNameFilter(u"Text files (%1)"_s.arg(attachmentNamePatterns().join(u' ')));
    QObject::connect(dialog, &QFileDialog::filesSelected, parent, chosen);
    dialog->open();
}
