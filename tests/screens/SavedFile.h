#pragma once

#include "screens/Screen.h"
#include "support/Await.h"

#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>

/// A file as a person saved it.
struct SavedFile {
    QByteArray bytes;

    int mediaBoxWidth() const {
        static const QRegularExpression box(QStringLiteral("/MediaBox\\[0 0 (\\d+) "));
        return box.match(QString::fromLatin1(bytes)).captured(1).toInt();
    }
    int pictureWidth() const { return QImage::fromData(bytes, "png").width(); }
};

/// Presses that button below `root`, and puts the file that it offers into the folder under its own name.
inline SavedFile savedByPressing(const QWidget &root, const QString &button, const QTemporaryDir &folder) {
    click(buttonNamed(root, button));
    const QPointer<QFileDialog> dialog = root.window()->findChild<QFileDialog *>();
    if (!dialog)
        return {};
    const QString name = dialog->selectedFiles().value(0).section(u'/', -1);
    dialog->setDirectory(folder.path());
    dialog->selectFile(name);
    static_cast<QDialog *>(dialog)->accept();
    EXPECT_TRUE(eventually([&] { return !dialog; }));
    QFile file(folder.filePath(name));
    return {file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray()};
}
