#include "e2e/OwnDisplay.h"
#include "e2e/OwnSite.h"
#include "support/OwnNetwork.h"

#include <QCoreApplication>

#include <cstdlib>
#include <vector>

#include <gtest/gtest.h>

/// The tests of the window don't leave the machine: they have a network of their own, in which there is one
/// site, where the system lets them. Who needs the site looks for the mark.
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
