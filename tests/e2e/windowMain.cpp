#include "e2e/OwnSite.h"
#include "support/OwnNetwork.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

/// The tests of the window never touch the display that somebody works at: the program starts itself
/// anew on one of its own.
static void moveToOwnDisplay(char **argv) {
    constexpr const char *mark = "OSTRELIN_TEST_DISPLAY";
    if (std::getenv(mark))
        return;
    setenv(mark, "1", 1);
    std::vector<char *> command{const_cast<char *>(WITH_DISPLAY)};
    for (; *argv; ++argv)
        command.push_back(*argv);
    command.push_back(nullptr);
    execv(WITH_DISPLAY, command.data());
    std::perror(WITH_DISPLAY);
    std::exit(1);
}

/// Nor do they leave the machine: they have a network of their own, in which there is one site, where the
/// system lets them. Who needs the site looks for the mark.
static void moveToOwnNetwork() {
    if (!std::getenv(ownNetworkMark))
        setenv(ownNetworkMark, enterOwnNetwork({siteAddress}, siteNames) ? "1" : "0", 1);
}

int main(int argc, char **argv) {
    char **const all = argv;
    std::vector<char *> own(all, all + argc + 1);
    ::testing::InitGoogleTest(&argc, argv);
    if (!::testing::GTEST_FLAG(list_tests)) {
        moveToOwnNetwork();
        moveToOwnDisplay(own.data());
    }
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
