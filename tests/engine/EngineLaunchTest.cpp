#include "engine/EngineLaunch.h"

#include "platform/LoopbackPort.h"
#include "support/Await.h"
#include "support/ScriptedEngine.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

QString makeFile(const QString &path, QFile::Permissions permissions) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.setPermissions(permissions);
    return path;
}

constexpr auto executable = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

} // namespace

TEST(ReasoningBudget, itIsADecimalIntegerWithAnOptionalSign) {
    EXPECT_EQ(reasoningBudget(u"-1"_s), -1);
    EXPECT_EQ(reasoningBudget(u"+5"_s), 5);
    EXPECT_EQ(reasoningBudget(u"0"_s), 0);
    EXPECT_EQ(reasoningBudget(u"007"_s), 7);
}

TEST(ReasoningBudget, anythingElseIsTheUsualOne) {
    EXPECT_EQ(reasoningBudget(std::nullopt), 256);
    for (const QString &text : {u""_s, u"abc"_s, u"1.5"_s, u" 5"_s, u"5 "_s, u"0x10"_s, u"+"_s, u"--5"_s,
                                u"5k"_s, u"1e3"_s, u"99999999999999999999"_s, u"٥"_s})
        EXPECT_EQ(reasoningBudget(text), 256) << text.toStdString();
}

TEST(FindServerBinary, anExecutableThatIsNamedBeatsTheBundled) {
    const QTemporaryDir folder;
    const QString bundled = makeFile(folder.filePath(u"Contents/Helpers/llama-server"_s), executable);
    const QString named = makeFile(folder.filePath(u"mine"_s), executable);
    QProcessEnvironment environment;
    EXPECT_EQ(findServerBinary(environment, folder.path()), bundled);
    environment.insert(u"OSTRELIN_LLAMA_SERVER"_s, named);
    EXPECT_EQ(findServerBinary(environment, folder.path()), named);
}

TEST(FindServerBinary, aNamedFileThatCannotBeExecutedFallsBackWithoutAnError) {
    const QTemporaryDir folder;
    const QString bundled = makeFile(folder.filePath(u"Contents/Helpers/llama-server"_s), executable);
    QProcessEnvironment environment;
    environment.insert(u"OSTRELIN_LLAMA_SERVER"_s, makeFile(folder.filePath(u"plain"_s), QFile::ReadOwner));
    EXPECT_EQ(findServerBinary(environment, folder.path()), bundled);
    environment.insert(u"OSTRELIN_LLAMA_SERVER"_s, folder.path());
    EXPECT_EQ(findServerBinary(environment, folder.path()), bundled) << "a folder is no executable";
    environment.insert(u"OSTRELIN_LLAMA_SERVER"_s, folder.filePath(u"missing"_s));
    EXPECT_EQ(findServerBinary(environment, folder.path()), bundled);
}

TEST(FindServerBinary, withoutAnExecutableThereIsNone) {
    const QTemporaryDir folder;
    EXPECT_FALSE(findServerBinary({}, folder.path()));
    makeFile(folder.filePath(u"Contents/Helpers/llama-server"_s), QFile::ReadOwner);
    EXPECT_FALSE(findServerBinary({}, folder.path()));
}

TEST(RandomAPIKey, itHasSixtyFourHexadecimalDigitsAndIsFreshEachTime) {
    const QString key = randomAPIKey();
    EXPECT_TRUE(QRegularExpression(u"^[0-9a-f]{64}$"_s).match(key).hasMatch()) << key.toStdString();
    EXPECT_NE(key, randomAPIKey());
}

TEST(ServerArguments, thereAreTwentyNineInThisOrder) {
    const QStringList expected{u"-m"_s,
                               u"/models/a model.gguf"_s,
                               u"--host"_s,
                               u"127.0.0.1"_s,
                               u"--port"_s,
                               u"4711"_s,
                               u"--api-key"_s,
                               u"k"_s,
                               u"-c"_s,
                               u"16384"_s,
                               u"-ngl"_s,
                               u"99"_s,
                               u"--jinja"_s,
                               u"--reasoning-format"_s,
                               u"deepseek"_s,
                               u"--no-reasoning-preserve"_s,
                               u"--reasoning-budget"_s,
                               u"-1"_s,
                               u"--no-webui"_s,
                               u"--no-mmproj"_s,
                               u"--offline"_s,
                               u"--fit"_s,
                               u"off"_s,
                               u"-np"_s,
                               u"1"_s,
                               u"--alias"_s,
                               u"ostrelin"_s,
                               u"--log-verbosity"_s,
                               u"2"_s};
    EXPECT_EQ(serverArguments(u"/models/a model.gguf"_s, 4711, u"k"_s, 16384, -1), expected);
    EXPECT_EQ(expected.size(), 29);
}

TEST(ServerEnvironment, itForbidsTheNetworkAndHidesTheCredential) {
    QProcessEnvironment environment;
    environment.insert(u"PATH"_s, u"/bin"_s);
    environment.insert(u"HF_TOKEN"_s, u"hidden"_s);
    environment.insert(u"LLAMA_ARG_OFFLINE"_s, u"0"_s);
    const QProcessEnvironment given = serverEnvironment(environment);
    EXPECT_EQ(given.value(u"PATH"_s), u"/bin"_s);
    EXPECT_FALSE(given.contains(u"HF_TOKEN"_s));
    EXPECT_EQ(given.value(u"LLAMA_ARG_OFFLINE"_s), u"1"_s);
}

TEST(FreeLoopbackPort, itCanBeBound) {
    const auto port = freeLoopbackPort();
    ASSERT_TRUE(port);
    EXPECT_GT(*port, 0);
    EXPECT_NE(*port, *freeLoopbackPort());
}

TEST(HealthStatus, itIsTheStatusOfTheAnswer) {
    for (const int status : {200, 404, 503}) {
        ScriptedEngine engine;
        engine.answer(Script(status));
        EXPECT_EQ(await(healthStatus(static_cast<quint16>(engine.url().port()), u"k"_s, {})), status);
        EXPECT_EQ(engine.requests().first().line, "GET /health HTTP/1.1");
        EXPECT_EQ(engine.requests().first().headers.value("authorization"), "Bearer k");
    }
}

TEST(HealthStatus, anEmptyKeyIsNoHeader) {
    ScriptedEngine engine;
    engine.answer(Script(200));
    await(healthStatus(static_cast<quint16>(engine.url().port()), QString(), {}));
    EXPECT_FALSE(engine.requests().first().headers.contains("authorization"));
}

TEST(HealthStatus, aServerThatIsNotThereIsMinusOne) {
    EXPECT_EQ(await(healthStatus(*freeLoopbackPort(), u"k"_s, {})), -1);
}

TEST(HealthStatus, aServerThatSaysNothingIsMinusOneAfterTwoSeconds) {
    ScriptedEngine engine;
    engine.answer(Script::silence());
    EXPECT_EQ(await(healthStatus(static_cast<quint16>(engine.url().port()), u"k"_s, {})), -1);
}
