#include "records/CatalogSource.h"

#include "platform/AtomicFile.h"
#include "records/Coder.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

Catalog loadBuiltInCatalog(const QString &resourcesFolder) {
    QString path = resourcesFolder + u"/catalog.json"_s;
    if (!QFileInfo::exists(path))
        path = resourcesFolder + u"/Resources/catalog.json"_s;
    try {
        return decodeRecord<Catalog>(readFile(path).value_or(QByteArray()));
    } catch (const DecodingError &) {
        return {};
    }
}
