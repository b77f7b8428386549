#include "core/UpdateInfo.h"

#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ScriptedEngine.h"

#include <QTemporaryFile>

using namespace Qt::StringLiterals;

namespace {

constexpr char complete[] = R"({"version": "1.2.0", "build": 40,
    "downloadURL": "https://ostrelin.example/ostrelin.deb", "notesURL": "https://ostrelin.example/notes",
    "minimumSystemVersion": "6.1", "more": {"to": "come"}})";

std::optional<UpdateInfo> fetched(const Script &script) {
    ScriptedEngine server;
    server.answer(script);
    return await(fetchUpdateInfo(server.url(), {}));
}

std::optional<UpdateInfo> told(const QByteArray &body) {
    return fetched(Script(200).raw(body));
}

UpdateInfo release(const QString &version, const std::optional<qint64> &build = std::nullopt) {
    return {.version = version, .build = build};
}

} // namespace

TEST(UpdateInfoTest, allOfItIsRead) {
    const std::optional<UpdateInfo> info = told(complete);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->version, u"1.2.0"_s);
    EXPECT_EQ(info->build, 40);
    EXPECT_EQ(info->downloadURL, QUrl(u"https://ostrelin.example/ostrelin.deb"_s));
    EXPECT_EQ(info->notesURL, QUrl(u"https://ostrelin.example/notes"_s));
    EXPECT_EQ(info->minimumSystemVersion, u"6.1"_s);
}

TEST(UpdateInfoTest, aVersionAloneIsEnough) {
    EXPECT_EQ(told(R"({"version": "2"})"), release(u"2"_s));
    EXPECT_EQ(told(R"({"version": "2", "build": null, "downloadURL": null})"), release(u"2"_s));
}

TEST(UpdateInfoTest, theRequestAsksForJSONAndTellsNothingOfThePerson) {
    ScriptedEngine server;
    server.answer(Script(200).raw(complete));
    await(fetchUpdateInfo(QUrl(server.url().toString() + u"/ostrelin/version.json"_s), {}));
    ASSERT_EQ(server.requests().size(), 1);
    const ScriptedEngine::Request request = server.requests().first();
    EXPECT_EQ(request.line, "GET /ostrelin/version.json HTTP/1.1");
    EXPECT_EQ(request.headers.value("accept"), "application/json");
    EXPECT_TRUE(request.body.isEmpty());
    for (const char *name : {"cookie", "referer", "authorization"})
        EXPECT_FALSE(request.headers.contains(name)) << name;
}

TEST(UpdateInfoTest, nothingIsKeptFromOneQuestionToTheNext) {
    ScriptedEngine server;
    server.answer(Script(200)
                      .header("Set-Cookie", "person=1; Path=/")
                      .header("Cache-Control", "max-age=86400")
                      .header("ETag", "\"1\"")
                      .raw(complete));
    for (int question = 0; question < 2; ++question)
        EXPECT_TRUE(await(fetchUpdateInfo(server.url(), {})));
    ASSERT_EQ(server.requests().size(), 2) << "no answer is remembered";
    EXPECT_EQ(server.requests().first().headers, server.requests().last().headers);
}

TEST(UpdateInfoTest, anAddressOutsideOfTheWebIsNone) {
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write(complete);
    file.close();
    EXPECT_FALSE(await(fetchUpdateInfo(QUrl::fromLocalFile(file.fileName()), {})));
}

TEST(UpdateInfoTest, itIsFollowedToWhereItHasGone) {
    ScriptedEngine there;
    there.answer(Script(200).raw(complete));
    EXPECT_TRUE(fetched(Script(301).header("Location", there.url().toEncoded()).raw("gone")));
}

TEST(UpdateInfoTest, aCircleOfRedirectsIsNone) {
    ScriptedEngine server;
    server.answer(Script(302).header("Location", server.url().toEncoded()));
    EXPECT_FALSE(await(fetchUpdateInfo(server.url(), {})));
}

TEST(UpdateInfoTest, aRedirectOutOfTheWebIsNone) {
    EXPECT_FALSE(fetched(Script(302).header("Location", "file:///etc/hostname")));
}

TEST(UpdateInfoTest, onlyStatus200Counts) {
    for (const int status : {201, 204, 206, 299, 304, 404, 500})
        EXPECT_FALSE(fetched(Script(status).raw(complete))) << status;
}

TEST(UpdateInfoTest, whatDoesNotDecodeIsNone) {
    for (const char *body : {"",
                             "<html>",
                             "null",
                             "[]",
                             "42",
                             R"("1.2")",
                             "{}",
                             R"({"build": 5})",
                             R"({"version": 1.2})",
                             R"({"version": null})",
                             R"({"version": ["1.2"]})",
                             R"({"version": "2", "build": "40"})",
                             R"({"version": "2", "build": 1.5})",
                             R"({"version": "2", "build": 1e300})",
                             R"({"version": "2", "build": true})",
                             R"({"version": "2", "downloadURL": 7})",
                             R"({"version": "2", "downloadURL": "http://[broken"})",
                             R"({"version": "2", "minimumSystemVersion": 99})",
                             R"({"version": "2"} and more)",
                             R"({"version": "2")",
                             "{\"version\": \"\xff\xfe\"}"})
        EXPECT_FALSE(told(body)) << body;
    EXPECT_FALSE(told(QByteArray(50'000, '[')));
}

TEST(UpdateInfoTest, anAddressThatIsNotOfTheWebCountsAsAbsent) {
    for (const char *address : {"file:///usr/bin/env", "javascript:alert(1)", "smb://host/share", "ostrelin",
                                "mailto:me@example.org"}) {
        const auto info = told(R"({"version": "2", "downloadURL": ")" + QByteArray(address) + R"("})");
        ASSERT_TRUE(info) << address;
        EXPECT_FALSE(info->downloadURL) << address;
    }
}

TEST(UpdateInfoTest, aVersionThatNoWindowHasRoomForIsNone) {
    EXPECT_TRUE(told(R"({"version": "9)" + QByteArray(63, '0') + R"("})"));
    EXPECT_FALSE(told(R"({"version": "9)" + QByteArray(64, '0') + R"("})"));
}

TEST(UpdateInfoTest, aTextOfManyKilobytesIsNoneEvenIfItDecodes) {
    EXPECT_FALSE(told(complete + QByteArray(200'000, ' ')));
}

TEST(UpdateInfoTest, aServerThatHangsUpIsNone) {
    EXPECT_FALSE(fetched(Script::hangUp()));
    EXPECT_FALSE(fetched(Script(200).raw(QByteArray(complete).first(60)).drop()));
    EXPECT_FALSE(await(fetchUpdateInfo(QUrl(u"http://127.0.0.1:9/version.json"_s), {})));
}

TEST(UpdateInfoTest, aServerThatSaysNothingIsGivenUpAfterTenSeconds) {
    EXPECT_FALSE(fetched(Script(200).raw(" ").pause(12'500).raw(complete)));
}

TEST(UpdateInfoTest, aServerThatIsSlowHasTenSecondsForAByte) {
    EXPECT_TRUE(fetched(Script(200).raw(" ").pause(7000).raw(complete)));
}

TEST(UpdateInfoTest, aServerThatTricklesIsGivenUpAfterTwenty) {
    Script trickle(200);
    for (int piece = 0; piece < 48; ++piece)
        trickle.raw(" ").pause(500);
    EXPECT_FALSE(fetched(trickle.raw(complete)));
}

TEST(UpdateInfoTest, aStopClosesTheConnection) {
    ScriptedEngine server;
    server.answer(Script(200).hold());
    std::stop_source stop;
    auto asking = fetchUpdateInfo(server.url(), stop.get_token());
    ASSERT_TRUE(eventually([&] { return server.openConnections() == 1; }));
    stop.request_stop();
    EXPECT_THROW(await(std::move(asking)), Cancelled);
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST(UpdateInfoTest, anOverrideSaysWhereItIs) {
    const EnvironmentVariable elsewhere("OSTRELIN_VERSIONURL", "http://127.0.0.1:1/version.json");
    EXPECT_EQ(versionURL(), QUrl(u"http://127.0.0.1:1/version.json"_s));
}

TEST(UpdateInfoTest, thisBuildsOwnAddressHasThePathOfTheVersion) {
    EXPECT_EQ(versionURL().path(), u"/ostrelin/version.json"_s);
}

TEST(ParseVersion, numbersStandBetweenDots) {
    EXPECT_EQ(parseVersion(u"1.10.3"_s), (QList<qint64>{1, 10, 3}));
    EXPECT_EQ(parseVersion(u"..1..2."_s), (QList<qint64>{1, 2}));
    EXPECT_EQ(parseVersion(u"+1.-2"_s), (QList<qint64>{1, -2}));
    EXPECT_TRUE(parseVersion(QString()).isEmpty());
}

TEST(ParseVersion, whatIsNoNumberIsLeftOut) {
    EXPECT_EQ(parseVersion(u"1.2-beta.3"_s), (QList<qint64>{1, 3}));
    EXPECT_EQ(parseVersion(u"1. 2.99999999999999999999.4"_s), (QList<qint64>{1, 4}));
    EXPECT_TRUE(parseVersion(u"latest"_s).isEmpty());
}

TEST(IsNewer, theFirstNumberThatDiffersDecides) {
    EXPECT_TRUE(isNewer(release(u"1.10"_s), {u"1.9"_s, 1})) << "numbers, not text";
    EXPECT_TRUE(isNewer(release(u"1.2.0.1"_s), {u"1.2"_s, 1}));
    EXPECT_FALSE(isNewer(release(u"1.2.9"_s, 99), {u"1.3"_s, 1}));
    EXPECT_FALSE(isNewer(release(u"0.9"_s), {u"1"_s, 1}));
    EXPECT_FALSE(isNewer(release(u"1.-1"_s), {u"1"_s, 1}));
}

TEST(IsNewer, betweenEqualOnesTheBuildDecides) {
    EXPECT_FALSE(isNewer(release(u"1.2"_s), {u"1.2.0"_s, 39}));
    EXPECT_TRUE(isNewer(release(u"1.2"_s, 40), {u"1.2.0"_s, 39}));
    EXPECT_FALSE(isNewer(release(u"1.2"_s, 39), {u"1.2.0"_s, 39}));
    EXPECT_FALSE(isNewer(release(u"nonsense"_s), {u"0.0"_s, 1}));
}

TEST(SystemAllows, aSystemThatIsAtLeastWhatIsNeeded) {
    const auto needing = [](const QString &version) {
        return UpdateInfo{.version = u"2"_s, .minimumSystemVersion = version};
    };
    const QList<qint64> system{6, 1, 0};
    EXPECT_TRUE(systemAllows(release(u"2"_s), system));
    for (const QString &version : {u"6"_s, u"6.1"_s, u"6.1.0"_s, u"6.1.0.0"_s, u"5.99"_s, u""_s, u"any"_s})
        EXPECT_TRUE(systemAllows(needing(version), system)) << version.toStdString();
    for (const QString &version : {u"99"_s, u"6.2"_s, u"6.1.1"_s, u"6.1.0.1"_s})
        EXPECT_FALSE(systemAllows(needing(version), system)) << version.toStdString();
}
