#include "platform/AtomicFile.h"
#include "records/CatalogSource.h"
#include "records/Coder.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ScriptedEngine.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

QByteArray builtIn() {
    return readFile(QStringLiteral(RESOURCES_FOLDER) + u"/catalog.json"_s).value();
}

std::optional<Catalog> fetched(const Script &script) {
    ScriptedEngine server;
    server.answer(script);
    return await(fetchRemoteCatalog(server.url(), {}));
}

} // namespace

TEST(RemoteCatalog, aCatalogWithTiersIsTaken) {
    EXPECT_EQ(fetched(Script(200).raw(builtIn())), decodeRecord<Catalog>(builtIn()));
    EXPECT_TRUE(fetched(Script(299).raw(builtIn())));
}

TEST(RemoteCatalog, isFollowedToWhereItHasGone) {
    ScriptedEngine there;
    there.answer(Script(200).raw(builtIn()));
    EXPECT_TRUE(fetched(Script(301).header("Location", there.url().toEncoded()).raw("gone")));
    EXPECT_EQ(there.requests().size(), 1);
}

TEST(RemoteCatalog, anEmptyListOfTiersIsNone) {
    EXPECT_FALSE(fetched(Script(200).raw(R"({"version":1,"tiers":[]})")));
}

TEST(RemoteCatalog, anotherStatusIsNone) {
    for (const int status : {300, 404, 500})
        EXPECT_FALSE(fetched(Script(status).raw(builtIn()))) << status;
}

TEST(RemoteCatalog, whatDoesNotDecodeIsNone) {
    EXPECT_FALSE(fetched(Script(200).raw("<html>")));
    EXPECT_FALSE(fetched(Script(200).raw(R"({"version":1,"tiers":[{"id":"x"}]})")));
}

TEST(RemoteCatalog, aServerThatHangsUpIsNone) {
    EXPECT_FALSE(fetched(Script::hangUp()));
    EXPECT_FALSE(fetched(Script(200).raw(builtIn().first(500)).drop()));
}

TEST(RemoteCatalog, aServerThatSaysNothingIsGivenUpAfterThreeSeconds) {
    EXPECT_FALSE(fetched(Script::silence()));
}

TEST(RemoteCatalog, aServerThatTricklesIsGivenUpAsWell) {
    Script trickle(200);
    for (int piece = 0; piece < 60; ++piece)
        trickle.raw(" ").pause(100);
    EXPECT_FALSE(fetched(trickle.raw(builtIn())));
}

TEST(RemoteCatalog, sizesThatNoDiskHasAreNone) {
    auto catalog = decodeRecord<Catalog>(builtIn());
    const auto served = [&] { return fetched(Script(200).raw(encodeRecord(catalog))); };
    ASSERT_TRUE(served());
    for (const qint64 size : {std::numeric_limits<qint64>::max(), qint64(-1)}) {
        catalog.tiers.last().sizeBytes = size;
        EXPECT_FALSE(served()) << size;
    }
    catalog.tiers.last().sizeBytes = 1;
    catalog.tiers.last().minRAMBytes = -1;
    EXPECT_FALSE(served());
}

TEST(RemoteCatalog, contextsThatNoEngineHasAreNone) {
    auto catalog = decodeRecord<Catalog>(builtIn());
    for (const qint64 tokens : {qint64(0), qint64(-5), std::numeric_limits<qint64>::max()}) {
        catalog.tiers.last().contextLength = tokens;
        EXPECT_FALSE(fetched(Script(200).raw(encodeRecord(catalog)))) << tokens;
    }
}

TEST(RemoteCatalog, namesThatNoModelMayHaveAreNone) {
    auto catalog = decodeRecord<Catalog>(builtIn());
    for (const QString &name :
         {u""_s, u"."_s, u".."_s, u"../x.gguf"_s, u"a/b"_s, u"x.gguf.partial"_s, u"CACHEDIR.TAG"_s}) {
        catalog.tiers.last().filename = name;
        EXPECT_FALSE(fetched(Script(200).raw(encodeRecord(catalog)))) << name.toStdString();
    }
}

TEST(RemoteCatalog, aTextOfManyMegabytesIsNoneEvenIfItDecodes) {
    EXPECT_FALSE(fetched(Script(200).raw(builtIn() + QByteArray(2'000'000, ' '))));
}

TEST(RemoteCatalog, anOverrideSaysWhereItIs) {
    const EnvironmentVariable elsewhere("OSTRELIN_CATALOGURL", "http://127.0.0.1:1/catalog.json");
    EXPECT_EQ(catalogURL(), QUrl(u"http://127.0.0.1:1/catalog.json"_s));
}

TEST(RemoteCatalog, thisBuildsOwnAddressHasThePathOfTheCatalog) {
    EXPECT_EQ(catalogURL().path(), u"/ostrelin/catalog.json"_s);
}
