#include "screens/PageFile.h"

#include "pages/drawing/PageCanvas.h"
#include "pages/paper/PageExport.h"
#include "records/Characters.h"
#include "screens/DialogFolder.h"

#include <QFile>
#include <QFileDialog>

using namespace Qt::StringLiterals;

namespace {

QString extension(PageFileKind kind) {
    return kind == PageFileKind::pdf ? u"pdf"_s : u"png"_s;
}

QString filter(PageFileKind kind) {
    return kind == PageFileKind::pdf ? u"PDF (*.pdf)"_s : u"PNG image (*.png)"_s;
}

QByteArray drawn(const PageDocument &document, PageFileKind kind, int width) {
    const PageCanvas canvas(document.title, document.markdown, width, document.updatedAt);
    return kind == PageFileKind::pdf ? exportPagePDF(canvas) : exportPagePNG(canvas);
}

/// As much of the name as has that many bytes on disk.
QString fitted(const QString &name, qsizetype most) {
    // A character has a byte at least.
    qsizetype count = most;
    QString beginning = name;
    while (QFile::encodeName(beginning).size() > most)
        beginning = firstCharacters(name, count--).toString();
    return beginning;
}

void write(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

} // namespace

QString pageFileName(const QString &title, PageFileKind kind) {
    // What Linux and macOS allow.
    constexpr qsizetype mostBytes = 255;
    const QString end = u'.' + extension(kind);
    QString name = title;
    name.replace(u'/', u'-').replace(u':', u'-').replace(u'"', u'\'');
    name = fitted(name, mostBytes - end.size());
    return (name.isEmpty() ? u"Page"_s : name) + end;
}

void savePageAs(QWidget *parent, const PageDocument &document, PageFileKind kind, int width) {
    const QByteArray bytes = drawn(document, kind, width);
    if (bytes.isEmpty())
        return;
    auto *dialog = new QFileDialog(parent, kind == PageFileKind::pdf ? u"Save as PDF"_s : u"Save as image"_s);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilter(filter(kind));
    dialog->setDefaultSuffix(extension(kind));
    beginInDocuments(*dialog);
    dialog->selectFile(pageFileName(document.title, kind));
    QObject::connect(dialog, &QFileDialog::fileSelected, parent,
                     [bytes](const QString &path) { write(path, bytes); });
    dialog->open();
}
