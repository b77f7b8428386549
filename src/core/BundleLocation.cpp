#include "core/BundleLocation.h"

#include "platform/Bundle.h"

#include <QDir>

using namespace Qt::StringLiterals;

bool isInTemporaryLocation(const QString &bundleFolder, const QString &homeFolder) {
    return bundleFolder.contains(u"AppTranslocation"_s) || bundleFolder.contains(u"/Volumes/"_s) ||
           bundleFolder.startsWith(homeFolder + u"/Downloads"_s);
}

bool isInTemporaryLocation() {
    return isInTemporaryLocation(mainBundleFolder(), QDir::homePath());
}
