#include "records/StoredRecords.h"

#include <QDirIterator>

using namespace Qt::StringLiterals;

QStringList jsonFilesIn(const QString &folder) {
    static const QString extension = u".json"_s;
    QStringList paths;
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (entries.hasNext()) {
        const QString path = entries.next();
        const QString name = entries.fileName();
        if (name.endsWith(extension) && name != extension)
            paths.append(path);
    }
    return paths;
}
