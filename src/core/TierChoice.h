#pragma once

#include "core/MachineReport.h"
#include "records/ModelTier.h"
#include "records/Settings.h"

#include <optional>

/// Which model a machine gets. Pure functions over values; a catalog lists its models from the heaviest
/// to the lightest, so that the first that fits is the best that fits.

/// The share of the GPU's memory that a model may claim.
inline constexpr double gpuHeadroomFactor = 0.85;

/// The free space that must remain beyond the model, in bytes.
inline constexpr qint64 diskReserveBytes = 5'000'000'000;

/// A model, and what the person should know about the choice.
struct TierChoice {
    ModelTier tier;
    std::optional<QString> note;

    bool operator==(const TierChoice &) const = default;
};

/// True if the machine can run the model: a known need of GPU memory within the budget, and enough RAM.
bool fitsHardware(const ModelTier &tier, const MachineReport &report);

/// True if the disk has room for the model and the reserve beyond it.
bool fitsDisk(const ModelTier &tier, const MachineReport &report);

/// The first model whose id begins with `wanted`; nothing if there is none, or nothing is wanted.
std::optional<ModelTier> forcedTier(const Catalog &catalog, const std::optional<QString> &wanted);

/// The same with the development override `tier`.
std::optional<ModelTier> forcedTier(const Catalog &catalog);

/// The model for this machine: the one that is forced, whatever the machine, else the best that fits
/// hardware and disk. A note tells if only the disk stands in the way of a better one. Nothing if none
/// fits.
std::optional<TierChoice> chooseTier(const MachineReport &report, const Catalog &catalog,
                                     const std::optional<ModelTier> &forced);

/// The best model that fits, if it stands before the installed one in the catalog and hasn't been
/// dismissed.
std::optional<ModelTier> upgradeCandidate(const MachineReport &report, const Catalog &catalog,
                                          const Settings &settings);

/// The question that offers an upgrade.
QString upgradeOffer(const ModelTier &tier);

/// The next lighter model; the lightest of all for one that isn't in the catalog.
std::optional<ModelTier> lighterTier(const ModelTier &tier, const Catalog &catalog);
