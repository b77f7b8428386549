#include "records/ModelTier.h"

#include "records/ConversationCoding.h"
#include "records/JsonFields.h"

#include <limits>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

ModelTier fullTier() {
    ModelTier tier;
    tier.id = u"sprout-4b"_s;
    tier.displayName = u"Sprout 4B"_s;
    tier.filename = u"sprout.gguf"_s;
    tier.url = QUrl(u"https://example.org/sprout.gguf"_s);
    tier.mirrorURL = QUrl(u"https://mirror.example.org/sprout.gguf"_s);
    tier.sha256 = u"ab"_s.repeated(32);
    tier.sizeBytes = 2500000000;
    tier.requiredGPUBytes = std::numeric_limits<qint64>::max();
    tier.minRAMBytes = 8000000000;
    tier.contextLength = 16384;
    tier.sampling = {0.7, 0.8, 20, 0, 1.5};
    tier.thinkingSampling = {0.6, 0.95, 20, 0, 1.5};
    tier.supportsTools = true;
    tier.license = u"Apache-2.0"_s;
    tier.gpuBytesProvisional = true;
    return tier;
}

InstalledModel fullModel() {
    return {u"sprout-4b"_s,         u"Sprout 4B"_s, u"sprout.gguf"_s, 16384,     {1, 1, 1, 0, 0},
            {0.5, 0.5, 40, 0.1, 0}, true,           u"MIT"_s,         2500000000};
}

/// The keys of a record without which it still decodes.
template<typename T>
QStringList dispensableKeys(const T &record) {
    QStringList dispensable;
    const QJsonObject object = encode(record).toObject();
    for (const QString &key : object.keys()) {
        QJsonObject without = object;
        without.remove(key);
        try {
            decodeRecord<T>(encodeText(without));
            dispensable.append(key);
        } catch (const DecodingError &) {
        }
    }
    return dispensable;
}

} // namespace

TEST(ModelTier, aTierComesBackAsItWas) {
    EXPECT_EQ(decodeRecord<ModelTier>(encodeRecord(fullTier())), fullTier());
}

TEST(ModelTier, itsKeysAreItsFieldNames) {
    EXPECT_EQ(
        encode(fullTier()).toObject().keys(),
        (QStringList{u"contextLength"_s, u"displayName"_s, u"filename"_s, u"gpuBytesProvisional"_s, u"id"_s,
                     u"license"_s, u"minRAMBytes"_s, u"mirrorURL"_s, u"requiredGPUBytes"_s, u"sampling"_s,
                     u"sha256"_s, u"sizeBytes"_s, u"supportsTools"_s, u"thinkingSampling"_s, u"url"_s}));
}

TEST(ModelTier, onlyTheMirrorAndTheProvisionalMarkAreDispensable) {
    EXPECT_EQ(dispensableKeys(fullTier()), (QStringList{u"gpuBytesProvisional"_s, u"mirrorURL"_s}));
}

TEST(ModelTier, absentOptionalFieldsAreNotWritten) {
    ModelTier tier = fullTier();
    tier.mirrorURL.reset();
    tier.gpuBytesProvisional.reset();
    const QJsonObject object = encode(tier).toObject();
    EXPECT_FALSE(object.contains(u"mirrorURL"_s));
    EXPECT_FALSE(object.contains(u"gpuBytesProvisional"_s));
    EXPECT_EQ(decodeRecord<ModelTier>(encodeRecord(tier)), tier);
}

TEST(ModelTier, aTierWithoutALicenseFailsTheWholeCatalog) {
    QJsonObject bad = encode(fullTier()).toObject();
    bad.remove(u"license"_s);
    const QJsonObject catalog{{u"version"_s, 1}, {u"tiers"_s, QJsonArray{encode(fullTier()), bad}}};
    EXPECT_THROW(decodeRecord<Catalog>(encodeText(catalog)), DecodingError);
}

TEST(ModelTier, aCatalogKeepsTheOrderOfItsTiers) {
    ModelTier lighter = fullTier();
    lighter.id = u"a"_s;
    const Catalog catalog{3, {fullTier(), lighter}};
    EXPECT_EQ(decodeRecord<Catalog>(encodeRecord(catalog)), catalog);
    EXPECT_EQ(dispensableKeys(catalog), QStringList());
}

TEST(ModelTier, aUrlThatIsNoneFailsTheTier) {
    for (const QString &url : {u""_s, u"https://["_s, u"https://example.org/a b"_s}) {
        QJsonObject object = encode(fullTier()).toObject();
        object.insert(u"url"_s, url);
        EXPECT_THROW(decodeRecord<ModelTier>(encodeText(object)), DecodingError) << url.toStdString();
        object = encode(fullTier()).toObject();
        object.insert(u"mirrorURL"_s, url);
        EXPECT_THROW(decodeRecord<ModelTier>(encodeText(object)), DecodingError) << url.toStdString();
    }
}

TEST(InstalledModel, itComesBackAsItWasAndEveryKeyIsRequired) {
    EXPECT_EQ(decodeRecord<InstalledModel>(encodeRecord(fullModel())), fullModel());
    EXPECT_EQ(dispensableKeys(fullModel()), QStringList());
    EXPECT_EQ(encode(fullModel()).toObject().keys(),
              (QStringList{u"contextLength"_s, u"displayName"_s, u"filename"_s, u"license"_s, u"sampling"_s,
                           u"sizeBytes"_s, u"supportsTools"_s, u"thinkingSampling"_s, u"tierId"_s}));
}

TEST(ModelTier, isFoundInTheCatalogByItsId) {
    ModelTier other = fullTier();
    other.id = u"other"_s;
    const Catalog catalog{1, {other, fullTier()}};
    EXPECT_EQ(tierWithId(u"sprout-4b"_s, catalog), fullTier());
    EXPECT_EQ(tierWithId(u"other"_s, catalog), other);
    EXPECT_FALSE(tierWithId(u"sprout"_s, catalog));
    EXPECT_FALSE(tierWithId(u"sprout-4b"_s, {}));
}

TEST(ModelTier, isMadeOfAnInstalledModelThatNoCatalogHas) {
    const ModelTier tier = tierOf(fullModel(), u"/models/a b.gguf"_s);
    ModelTier expected;
    expected.id = u"sprout-4b"_s;
    expected.displayName = u"Sprout 4B"_s;
    expected.filename = u"sprout.gguf"_s;
    expected.url = QUrl(u"file:///models/a%20b.gguf"_s);
    expected.sizeBytes = 2500000000;
    expected.contextLength = 16384;
    expected.sampling = {1, 1, 1, 0, 0};
    expected.thinkingSampling = {0.5, 0.5, 40, 0.1, 0};
    expected.supportsTools = true;
    expected.license = u"MIT"_s;
    EXPECT_EQ(tier, expected);
}
