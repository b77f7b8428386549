#include "platform/ChildProcess.h"
#include "support/Await.h"

#include <mutex>

using namespace Qt::StringLiterals;

// The same web that the other tests reach through a proxy, reached as a person's is: by names that the system
// looks up and connections to public addresses.

namespace {

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

} // namespace

TEST(OwnNetwork, isVisitedAsTheWebIs) {
    std::mutex lock;
    QByteArray printed;
    const ChildProcess process({.executable = QStringLiteral(WEB_VISITOR),
                                .arguments = {},
                                .environment = QProcessEnvironment::systemEnvironment(),
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
