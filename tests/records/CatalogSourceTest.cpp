#include "records/CatalogSource.h"

#include "records/Folders.h"
#include "records/JsonFields.h"
#include "records/Samples.h"

#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray catalogText(qint64 version) {
    return encodeRecord(Catalog{version, {}});
}

} // namespace

TEST(CatalogSource, theFileAtTheTopIsTakenBeforeTheOneInTheSubfolder) {
    const QTemporaryDir folder;
    ensureFolder(folder.filePath(u"Resources"_s));
    Samples::putFile(folder.filePath(u"Resources/catalog.json"_s), catalogText(2));
    EXPECT_EQ(loadBuiltInCatalog(folder.path()).version, 2);
    Samples::putFile(folder.filePath(u"catalog.json"_s), catalogText(1));
    EXPECT_EQ(loadBuiltInCatalog(folder.path()).version, 1);
}

TEST(CatalogSource, noFileGivesAnEmptyCatalog) {
    const QTemporaryDir folder;
    EXPECT_EQ(loadBuiltInCatalog(folder.path()), (Catalog{0, {}}));
}

TEST(CatalogSource, aDamagedFileGivesAnEmptyCatalog) {
    const QTemporaryDir folder;
    for (const char *text : {"oops", "[]", R"({"version": 1})", R"({"version": 1, "tiers": [{}]})"}) {
        Samples::putFile(folder.filePath(u"catalog.json"_s), text);
        EXPECT_EQ(loadBuiltInCatalog(folder.path()), Catalog());
    }
}

TEST(CatalogSource, theCatalogThatIsDeliveredHasSoundTiersFromTheHeaviestToTheLightest) {
    const Catalog catalog = loadBuiltInCatalog(QStringLiteral(RESOURCES_FOLDER));
    ASSERT_FALSE(catalog.tiers.isEmpty());
    static const QRegularExpression digest(u"^[0-9a-f]{64}$"_s);
    QSet<QString> ids;
    qint64 heavier = std::numeric_limits<qint64>::max();
    for (const ModelTier &tier : catalog.tiers) {
        EXPECT_FALSE(ids.contains(tier.id));
        ids.insert(tier.id);
        EXPECT_TRUE(digest.match(tier.sha256).hasMatch());
        EXPECT_EQ(tier.url.scheme(), u"https"_s);
        EXPECT_FALSE(tier.filename.contains(u'/'));
        EXPECT_LT(tier.sizeBytes, heavier);
        heavier = tier.sizeBytes;
        EXPECT_GT(tier.requiredGPUBytes, tier.sizeBytes);
    }
}
