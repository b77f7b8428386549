#include "screens/AttachDialog.h"

#include "conversation/Attachments.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

void openAttachDialog(QWidget *parent, const std::function<void(const QStringList &paths)> &chosen) {
    auto *dialog = new QFileDialog(parent, u"Attach"_s);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setLabelText(QFileDialog::Accept, u"Attach"_s);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setNameFilter(u"Text files (%1)"_s.arg(attachmentNamePatterns().join(u' ')));
    QObject::connect(dialog, &QFileDialog::filesSelected, parent, chosen);
    dialog->open();
}

QStringList attachableFiles(const QStringList &paths) {
    QStringList files;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(files), [](const QString &path) {
        return QDir::match(attachmentNamePatterns(), QFileInfo(path).fileName());
    });
    return files;
}

QStringList filesIn(const QMimeData &data) {
    QStringList files;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    return files;
}
