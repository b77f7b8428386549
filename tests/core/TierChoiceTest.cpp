#include "core/TierChoice.h"

#include "records/CatalogSource.h"
#include "support/EnvironmentVariable.h"

#include <limits>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr quint64 giga = 1'000'000'000;
constexpr qint64 roomy = 1'000'000'000'000;

ModelTier tier(const QString &id, qint64 sizeBytes, qint64 gpu, qint64 ram = 0) {
    return {.id = id, .sizeBytes = sizeBytes, .requiredGPUBytes = gpu, .minRAMBytes = ram};
}

MachineReport machine(quint64 ram, quint64 gpu, qint64 disk = roomy) {
    return {.totalRAM = ram, .gpuBudget = gpu, .freeDisk = disk};
}

/// Three models: a of 30 GB, b of 20 GB, c of 10 GB on disk.
const Catalog three{1,
                    {tier(u"a"_s, 30 * giga, 30 * giga), tier(u"b"_s, 20 * giga, 20 * giga),
                     tier(u"c"_s, 10 * giga, 10 * giga)}};

QString chosen(const MachineReport &report, const Catalog &catalog) {
    const auto choice = chooseTier(report, catalog, std::nullopt);
    return choice ? choice->tier.id : u"none"_s;
}

Catalog builtIn() {
    return loadBuiltInCatalog(QStringLiteral(RESOURCES_FOLDER));
}

/// A machine without an accelerator, as it is measured.
MachineReport withoutDevice(quint64 ram) {
    return machine(ram, processorBudget(ram));
}

Settings installed(const QString &id) {
    Settings settings;
    settings.installed = InstalledModel{.tierId = id};
    return settings;
}

} // namespace

TEST(FitsHardware, theNeedMayBeEightyFivePercentOfTheBudgetAndNotAByteMore) {
    const MachineReport report = machine(64 * giga, 10'000'000'001);
    EXPECT_TRUE(fitsHardware(tier(u"x"_s, 1, 8'500'000'000), report));
    EXPECT_FALSE(fitsHardware(tier(u"x"_s, 1, 8'500'000'001), report));
}

TEST(FitsHardware, aModelWithoutAKnownNeedNeverFits) {
    EXPECT_FALSE(fitsHardware(tier(u"x"_s, 1, 0), machine(64 * giga, 64 * giga)));
    EXPECT_FALSE(fitsHardware(tier(u"x"_s, 1, -1), machine(64 * giga, 64 * giga)));
    EXPECT_TRUE(fitsHardware(tier(u"x"_s, 1, 1), machine(64 * giga, 64 * giga)));
}

TEST(FitsHardware, theMemoryMustBeThere) {
    const ModelTier model = tier(u"x"_s, 1, 1, 8 * giga);
    EXPECT_TRUE(fitsHardware(model, machine(8 * giga, giga)));
    EXPECT_FALSE(fitsHardware(model, machine(8 * giga - 1, giga)));
}

TEST(FitsHardware, theLargestBudgetIsNoTrouble) {
    constexpr quint64 most = std::numeric_limits<quint64>::max();
    EXPECT_TRUE(fitsHardware(tier(u"x"_s, 1, std::numeric_limits<qint64>::max()), machine(most, most)));
}

TEST(FitsDisk, fiveGigabytesMustRemain) {
    const ModelTier model = tier(u"x"_s, 3 * giga, 1);
    EXPECT_TRUE(fitsDisk(model, machine(0, 0, 8'000'000'000)));
    EXPECT_FALSE(fitsDisk(model, machine(0, 0, 7'999'999'999)));
}

TEST(ChooseTier, withoutABudgetNothingFits) {
    EXPECT_FALSE(chooseTier(machine(64 * giga, 0), three, std::nullopt));
}

TEST(ChooseTier, anEmptyCatalogHasNothing) {
    EXPECT_FALSE(chooseTier(machine(64 * giga, 64 * giga), {}, std::nullopt));
}

TEST(ChooseTier, theFirstThatFitsIsTaken) {
    const auto choice = chooseTier(machine(64 * giga, 100 * giga), three, std::nullopt);
    EXPECT_EQ(choice, (TierChoice{three.tiers.at(0), std::nullopt}));
}

TEST(ChooseTier, aModelThatTheHardwareCannotRunIsNoIdeal) {
    // The machine carries b and not a: that there is no room for a is no news.
    const auto choice = chooseTier(machine(64 * giga, 24 * giga, 26 * giga), three, std::nullopt);
    EXPECT_EQ(choice, (TierChoice{three.tiers.at(1), std::nullopt}));
}

TEST(ChooseTier, aFullDiskGivesALighterModelAndANoteOnTheBest) {
    const auto choice = chooseTier(machine(64 * giga, 100 * giga, 17 * giga), three, std::nullopt);
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->tier.id, u"c"_s);
    EXPECT_EQ(choice->note, u"Ostrelin picked a lighter brain because your Mac is low on storage. "
                            "Free up 18 GB to upgrade."_s)
        << "what is missing for a, not for b";
}

TEST(ChooseTier, whereOnlyTheDiskIsInTheWayNothingIsChosen) {
    EXPECT_FALSE(chooseTier(machine(64 * giga, 100 * giga, 14 * giga), three, std::nullopt));
}

TEST(ChooseTier, equallyFittingModelsGoByTheirOrder) {
    const Catalog twins{1, {tier(u"second"_s, 1, 1), tier(u"first"_s, 1, 1)}};
    EXPECT_EQ(chosen(machine(1, giga), twins), u"second"_s);
}

TEST(ChooseTier, aForcedModelIsNotTested) {
    EXPECT_EQ(chooseTier(machine(0, 0, 0), three, three.tiers.at(0)),
              (TierChoice{three.tiers.at(0), std::nullopt}));
}

TEST(ForcedTier, theBeginningOfAnIdIsEnoughAndTheFirstOneCounts) {
    const Catalog catalog{1, {tier(u"big-32"_s, 1, 1), tier(u"small-8"_s, 1, 1), tier(u"small-4"_s, 1, 1)}};
    EXPECT_EQ(forcedTier(catalog, u"small"_s)->id, u"small-8"_s);
    EXPECT_EQ(forcedTier(catalog, u"small-4"_s)->id, u"small-4"_s);
    EXPECT_FALSE(forcedTier(catalog, u"mall"_s));
    EXPECT_FALSE(forcedTier(catalog, std::nullopt));
    EXPECT_FALSE(forcedTier({}, u"small"_s));
}

TEST(ForcedTier, anOverrideNamesIt) {
    EXPECT_FALSE(forcedTier(three));
    const EnvironmentVariable wanted("OSTRELIN_TIER", "b");
    EXPECT_EQ(forcedTier(three)->id, u"b"_s);
}

/// What each kind of machine gets of the catalog that comes with the program.
TEST(ChooseTier, everyMachineGetsTheBestThatItCanRun) {
    struct Row {
        const char *machine;
        MachineReport report;
        const char *tier;
    };
    const QList<Row> rows{
        {"8 GB, no device", withoutDevice(8 * giga), "lite-qwen3-0.6b"},
        {"8 GB, shared memory", machine(8 * giga, 5'700'000'000), "qwen3-4b"},
        {"16 GB, no device", withoutDevice(16 * giga), "qwen3-4b"},
        {"16 GB, a card of 8 GB", machine(16 * giga, 8 * giga), "qwen3-4b"},
        {"16 GB, shared memory", machine(16 * giga, 12 * giga), "qwen3-8b"},
        {"24 GB, no device", withoutDevice(24 * giga), "qwen3-4b"},
        {"24 GB, a card of 16 GB", machine(24 * giga, 16 * giga), "qwen3-14b"},
        {"32 GB, no device", withoutDevice(32 * giga), "qwen3-4b"},
        {"32 GB, a card of 12 GB", machine(32 * giga, 12 * giga), "qwen3-8b"},
        {"32 GB, a card of 24 GB", machine(32 * giga, 24 * giga), "qwen3-14b"},
        {"64 GB, no device", withoutDevice(64 * giga), "qwen3-4b"},
        {"64 GB, a card of 32 GB", machine(64 * giga, 32 * giga), "qwen3-32b"},
        {"30 GB, a card of 32 GB", machine(30 * giga, 32 * giga), "qwen3-14b"},
        {"4 GB, a card of 8 GB", machine(4 * giga, 8 * giga), "none"},
        {"64 GB, a full disk", machine(64 * giga, 32 * giga, 5 * giga), "none"},
        {"64 GB, a disk of 8 GB", machine(64 * giga, 32 * giga, 8 * giga), "qwen3-4b"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(chosen(row.report, builtIn()), QLatin1String(row.tier)) << row.machine;
}

TEST(UpgradeCandidate, aBetterModelThatFitsIsOffered) {
    EXPECT_EQ(upgradeCandidate(machine(64 * giga, 100 * giga), three, installed(u"c"_s))->id, u"a"_s);
    EXPECT_EQ(upgradeCandidate(machine(64 * giga, 24 * giga), three, installed(u"c"_s))->id, u"b"_s);
}

TEST(UpgradeCandidate, theSameOrAHeavierOneIsGoodEnough) {
    EXPECT_FALSE(upgradeCandidate(machine(64 * giga, 100 * giga), three, installed(u"a"_s)));
    EXPECT_FALSE(upgradeCandidate(machine(64 * giga, 24 * giga), three, installed(u"a"_s)));
}

TEST(UpgradeCandidate, nothingInstalledOrNothingThatFitsIsNoOffer) {
    EXPECT_FALSE(upgradeCandidate(machine(64 * giga, 100 * giga), three, {}));
    EXPECT_FALSE(upgradeCandidate(machine(64 * giga, 0), three, installed(u"c"_s)));
}

TEST(UpgradeCandidate, aModelThatLeftTheCatalogGetsNoOffers) {
    EXPECT_FALSE(upgradeCandidate(machine(64 * giga, 100 * giga), three, installed(u"gone"_s)));
}

TEST(UpgradeCandidate, aDismissalHoldsForOneModelOnly) {
    Settings settings = installed(u"c"_s);
    settings.dismissedUpgradeTierId = u"b"_s;
    const MachineReport littleRoom = machine(64 * giga, 100 * giga, 26 * giga);
    EXPECT_FALSE(upgradeCandidate(littleRoom, three, settings));
    EXPECT_EQ(upgradeCandidate(machine(64 * giga, 100 * giga), three, settings)->id, u"a"_s);
}

TEST(UpgradeOffer, itNamesTheSize) {
    EXPECT_EQ(upgradeOffer(three.tiers.at(0)),
              u"Your Mac can run a smarter version of Ostrelin. Download (30 GB)?"_s);
}

TEST(LighterTier, itIsTheNextOne) {
    EXPECT_EQ(lighterTier(three.tiers.at(0), three)->id, u"b"_s);
    EXPECT_EQ(lighterTier(three.tiers.at(1), three)->id, u"c"_s);
    EXPECT_FALSE(lighterTier(three.tiers.at(2), three));
}

TEST(LighterTier, aModelThatLeftTheCatalogFallsToTheLightest) {
    EXPECT_EQ(lighterTier(tier(u"gone"_s, 1, 1), three)->id, u"c"_s);
    EXPECT_FALSE(lighterTier(tier(u"gone"_s, 1, 1), {}));
}
