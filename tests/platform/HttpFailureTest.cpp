#include "platform/ChildProcess.h"
#include "platform/Http.h"
#include "platform/LoopbackPort.h"
#include "platform/NetworkState.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ScriptedEngine.h"

#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <mutex>

#include <unistd.h>

using namespace Qt::StringLiterals;
using Reason = HttpError::Reason;

// Why a request doesn't get through, told apart.

namespace {

HttpError failureOf(const QUrl &url) {
    HttpRequest request;
    request.url = url;
    try {
        await(fetch(request, {}));
    } catch (const HttpError &error) {
        return error;
    }
    ADD_FAILURE() << "no failure";
    return HttpError(Reason::other);
}

Reason reasonAfter(const Script &script) {
    ScriptedEngine server;
    server.answer(script);
    return failureOf(server.url()).reason();
}

/// What a server makes of a request that says `answer` as soon as somebody comes.
Reason reasonAfterWords(const QByteArray &answer, const QString &scheme = u"http"_s) {
    QTcpServer server;
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&] {
        QTcpSocket *const socket = server.nextPendingConnection();
        socket->write(answer);
        socket->flush();
    });
    return failureOf(QUrl(u"%1://127.0.0.1:%2/"_s.arg(scheme).arg(server.serverPort()))).reason();
}

} // namespace

TEST(HttpFailure, aConnectionThatBreaksIsLost) {
    EXPECT_EQ(reasonAfter(Script::hangUp()), Reason::lost);
    EXPECT_EQ(reasonAfter(Script(200).raw("a").drop()), Reason::lost);
    EXPECT_EQ(reasonAfter(Script(200).raw("a").pause(20).reset()), Reason::lost);
    EXPECT_EQ(reasonAfter(Script::plain().header("Content-Length", "10").raw("short")), Reason::lost);
}

TEST(HttpFailure, whereNobodyListensTheServerIsUnreachable) {
    EXPECT_EQ(failureOf(QUrl(u"http://127.0.0.1:%1/"_s.arg(freeLoopbackPort().value()))).reason(),
              Reason::unreachable);
}

TEST(HttpFailure, aNameWithoutAnAddressIsUnknownUnlessThereIsNoNetwork) {
    const EnvironmentVariable noProxy("http_proxy", "");
    EXPECT_EQ(failureOf(QUrl(u"http://nobody.invalid/"_s)).reason(),
              hasNetwork() ? Reason::unknownHost : Reason::notConnected);
}

TEST(HttpFailure, anAddressThatIsNoneIsBad) {
    for (const QString &address : {u""_s, u"nonsense:"_s, u"ftp://127.0.0.1/"_s, u"file:///etc/hostname"_s})
        EXPECT_EQ(failureOf(QUrl(address)).reason(), Reason::badAddress) << address.toStdString();
}

TEST(HttpFailure, aServerThatSpeaksAnotherLanguageGivesABadAnswer) {
    EXPECT_EQ(reasonAfterWords("220 mail.example ESMTP\r\n"), Reason::badAnswer);
}

TEST(HttpFailure, aServerWithoutEncryptionIsInsecure) {
    EXPECT_EQ(reasonAfterWords("HTTP/1.1 400 What?\r\n\r\n", u"https"_s), Reason::insecure);
}

TEST(HttpFailure, everyReasonIsASentence) {
    for (const Reason reason :
         {Reason::notConnected, Reason::lost, Reason::timedOut, Reason::unreachable, Reason::unknownHost,
          Reason::insecure, Reason::badAddress, Reason::tooManyRedirects, Reason::badAnswer, Reason::tooLong,
          Reason::other}) {
        const std::string text = HttpError(reason).what();
        EXPECT_GT(text.size(), 10U);
        EXPECT_EQ(text.back(), '.');
        EXPECT_EQ(HttpError(reason).reason(), reason);
    }
}

TEST(HttpName, aServerOfNamesThatSaysNothingHoldsNothingUp) {
    const QTemporaryDir folder;
    QFile resolver(folder.filePath(u"resolv.conf"_s));
    ASSERT_TRUE(resolver.open(QIODevice::WriteOnly));
    resolver.write("nameserver 127.0.0.1\n");
    resolver.close();
    QStringList command{u"unshare"_s, u"--mount"_s, u"--net"_s};
    if (::geteuid() != 0)
        command << u"--user"_s << u"--map-root-user"_s;
    command << u"sh"_s << u"-c"_s << u"mount --bind \"$0\" /etc/resolv.conf && exec \"$1\""_s
            << resolver.fileName() << QStringLiteral(SILENT_NAME);
    std::mutex lock;
    QByteArray printed;
    const ChildProcess process({.executable = u"/usr/bin/env"_s,
                                .arguments = command,
                                .environment = QProcessEnvironment::systemEnvironment(),
                                .onOutput =
                                    [&](QByteArrayView piece) {
                                        const std::lock_guard guard(lock);
                                        printed += piece;
                                    },
                                .onError = {},
                                .onExit = {}});
    EXPECT_TRUE(eventually([&] { return !process.isRunning(); }));
    const std::lock_guard guard(lock);
    if (!printed.startsWith("listening"))
        GTEST_SKIP()
            << "A SILENT NAME SERVER WASN'T TESTED: this system lets nobody have a network of their own";
    EXPECT_EQ(printed, "listening\nThe request timed out.\n");
}

TEST(Loopback, isKnownByItsNamesAndAddresses) {
    for (const QString &host : {u"localhost"_s, u"127.0.0.1"_s, u"127.9.9.9"_s, u"::1"_s})
        EXPECT_TRUE(isLoopback(host)) << host.toStdString();
    for (const QString &host : {u""_s, u"localhost.example"_s, u"128.0.0.1"_s, u"example.org"_s, u"::2"_s,
                                u"127.evil.example"_s, u"127.0.0.1.example"_s})
        EXPECT_FALSE(isLoopback(host)) << host.toStdString();
}
