#include "e2e/OwnDisplay.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <unistd.h>

void moveToOwnDisplay(char **argv) {
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
