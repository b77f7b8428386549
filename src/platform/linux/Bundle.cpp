#include "platform/Bundle.h"

#include "platform/linux/ProcessLink.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

QString bundleFolderBeside(const QString &executableFolder) {
    if (QFileInfo(executableFolder + u"/Contents"_s).isDir())
        return executableFolder;
    return QDir::cleanPath(executableFolder + u"/../lib/ostrelin"_s);
}

QString executablePath() {
    const QString path = withoutDeletedMark(QFile::symLinkTarget(u"/proc/self/exe"_s));
    return QFile::exists(path) ? path : QString();
}

QString mainBundleFolder() {
    return bundleFolderBeside(QFileInfo(QFile::symLinkTarget(u"/proc/self/exe"_s)).absolutePath());
}

QString resourcesFolder() {
    return mainBundleFolder() + u"/Contents/Resources"_s;
}
