#include "core/TierChoice.h"

#include "records/Formatters.h"
#include "records/Options.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

template<typename Test>
std::optional<ModelTier> first(const Catalog &catalog, Test test) {
    const auto found = std::find_if(catalog.tiers.begin(), catalog.tiers.end(), test);
    return found == catalog.tiers.end() ? std::nullopt : std::optional(*found);
}

/// The place of a model in the catalog, or the number of models.
qsizetype placeOf(const QString &id, const Catalog &catalog) {
    const auto found = std::find_if(catalog.tiers.begin(), catalog.tiers.end(),
                                    [&](const ModelTier &tier) { return tier.id == id; });
    return std::distance(catalog.tiers.begin(), found);
}

std::optional<ModelTier> bestFit(const MachineReport &report, const Catalog &catalog) {
    return first(catalog,
                 [&](const ModelTier &tier) { return fitsHardware(tier, report) && fitsDisk(tier, report); });
}

QString noteOn(const ModelTier &ideal, const MachineReport &report) {
    const qint64 missing = ideal.sizeBytes + diskReserveBytes - report.freeDisk;
    return u"Ostrelin picked a lighter brain because your Mac is low on storage. Free up %1 to upgrade."_s
        .arg(formatBytes(std::max<qint64>(0, missing)));
}

} // namespace

bool fitsHardware(const ModelTier &tier, const MachineReport &report) {
    if (tier.minRAMBytes < 0)
        qFatal("The catalog asks for a negative amount of memory");
    const auto budget = static_cast<quint64>(static_cast<double>(report.gpuBudget) * gpuHeadroomFactor);
    return tier.requiredGPUBytes >= 1 && static_cast<quint64>(tier.requiredGPUBytes) <= budget &&
           report.totalRAM >= static_cast<quint64>(tier.minRAMBytes);
}

bool fitsDisk(const ModelTier &tier, const MachineReport &report) {
    return report.freeDisk >= tier.sizeBytes + diskReserveBytes;
}

std::optional<ModelTier> forcedTier(const Catalog &catalog, const std::optional<QString> &wanted) {
    if (!wanted)
        return std::nullopt;
    return first(catalog, [&](const ModelTier &tier) { return tier.id.startsWith(*wanted); });
}

std::optional<ModelTier> forcedTier(const Catalog &catalog) {
    return forcedTier(catalog, optionValue(u"tier"_s));
}

std::optional<TierChoice> chooseTier(const MachineReport &report, const Catalog &catalog,
                                     const std::optional<ModelTier> &forced) {
    if (forced)
        return TierChoice{*forced, std::nullopt};
    const std::optional<ModelTier> chosen = bestFit(report, catalog);
    if (!chosen)
        return std::nullopt;
    const auto ideal = first(catalog, [&](const ModelTier &tier) { return fitsHardware(tier, report); });
    if (ideal->id == chosen->id)
        return TierChoice{*chosen, std::nullopt};
    return TierChoice{*chosen, noteOn(*ideal, report)};
}

std::optional<ModelTier> upgradeCandidate(const MachineReport &report, const Catalog &catalog,
                                          const Settings &settings) {
    if (!settings.installed)
        return std::nullopt;
    const qsizetype installed = placeOf(settings.installed->tierId, catalog);
    const std::optional<ModelTier> best = bestFit(report, catalog);
    if (installed == catalog.tiers.size() || !best || placeOf(best->id, catalog) >= installed ||
        settings.dismissedUpgradeTierId == best->id)
        return std::nullopt;
    return best;
}

QString upgradeOffer(const ModelTier &tier) {
    return u"Your Mac can run a smarter version of Ostrelin. Download (%1)?"_s.arg(
        formatBytes(tier.sizeBytes));
}

std::optional<ModelTier> lighterTier(const ModelTier &tier, const Catalog &catalog) {
    const auto &tiers = catalog.tiers;
    if (tiers.isEmpty())
        return std::nullopt;
    const qsizetype place = placeOf(tier.id, catalog);
    if (place == tiers.size())
        return tiers.last();
    return place + 1 < tiers.size() ? std::optional(tiers.at(place + 1)) : std::nullopt;
}
