#include "platform/ChildProcess.h"
#include "support/Await.h"

#include <QFile>
#include <QTemporaryDir>

#include <mutex>

#include <unistd.h>

using namespace Qt::StringLiterals;

// The same web that the other tests reach through a proxy, reached as a person's is: by names that the system
// looks up and connections to public addresses.

namespace {

const QByteArray names = "127.0.0.1 localhost\n"
                         "203.0.113.7 site.example\n"
                         "203.0.113.7 mixed.example\n"
                         "10.0.0.1 mixed.example\n"
                         "10.0.0.1 inside.example\n";

const QByteArray visits = "a network of its own\n"
                          "an address: A page of the site\n"
                          "a name: A page of the site\n"
                          "a name with an inner address, too: That address is not allowed.\n"
                          "an inner address: That address is not allowed.\n"
                          "a name of an inner address: That address is not allowed.\n"
                          "a name that nobody has: That address is not allowed.\n"
                          "nobody listens: That page could not be opened.\n"
                          "a page that has moved inside: A page inside\n"
                          "a search: [1] Other|https://other.example/|\n"
                          "requests inside: 1\n";

/// The system's command that gives a program a network and files of its own.
QStringList inOwnNetwork(const QString &script, const QStringList &arguments) {
    QStringList command{u"unshare"_s, u"--mount"_s, u"--net"_s};
    if (::geteuid() != 0)
        command << u"--user"_s << u"--map-root-user"_s;
    return command << u"sh"_s << u"-c"_s << script << arguments;
}

QProcessEnvironment environmentWithoutProxies() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &variable : {u"http_proxy"_s, u"https_proxy"_s, u"all_proxy"_s, u"ALL_PROXY"_s})
        environment.remove(variable);
    return environment;
}

} // namespace

TEST(OwnNetwork, isVisitedAsTheWebIs) {
    const QTemporaryDir folder;
    QFile hosts(folder.filePath(u"hosts"_s));
    ASSERT_TRUE(hosts.open(QIODevice::WriteOnly));
    hosts.write(names);
    hosts.close();
    std::mutex lock;
    QByteArray printed;
    const ChildProcess process({.executable = u"/usr/bin/env"_s,
                                .arguments = inOwnNetwork(u"mount --bind \"$0\" /etc/hosts && exec \"$1\""_s,
                                                          {hosts.fileName(), QStringLiteral(WEB_VISITOR)}),
                                .environment = environmentWithoutProxies(),
                                .onOutput =
                                    [&](QByteArrayView piece) {
                                        const std::lock_guard guard(lock);
                                        printed += piece;
                                    },
                                .onError = {},
                                .onExit = {}});
    EXPECT_TRUE(eventually([&] { return !process.isRunning(); }, 60'000));
    const std::lock_guard guard(lock);
    if (!printed.startsWith("a network"))
        GTEST_SKIP()
            << "A WEB WITHOUT A PROXY WASN'T TESTED: this system lets nobody have a network of their own";
    EXPECT_EQ(printed, visits);
}
