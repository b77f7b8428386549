#include "screens/ModelFormModel.h"

#include "records/Formatters.h"

#include <algorithm>

using namespace Qt::StringLiterals;

ModelFormModel modelFormModel(const Settings &settings, const Catalog &catalog, const QString &modelsFolder) {
    ModelFormModel model;
    if (!settings.installed)
        return model;
    const InstalledModel &installed = *settings.installed;
    const QString size = formatBytes(installed.sizeBytes);
    model.installed = {.name = installed.displayName,
                       .size = size,
                       .location = modelsFolder,
                       .current = u"Current: "_s + installed.displayName + u" · "_s + size};
    const QList<ModelTier> &tiers = catalog.tiers;
    const auto own = std::find_if(tiers.begin(), tiers.end(),
                                  [&](const ModelTier &tier) { return tier.id == installed.tierId; });
    if (own == tiers.end())
        return model;
    const auto place = own - tiers.begin();
    model.larger = tiers.first(place);
    model.smaller = tiers.sliced(place + 1);
    return model;
}
