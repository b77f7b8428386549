// Prints whether another instance of this executable runs, and stays until it is ended.

#include "platform/Processes.h"

#include <cstdio>

#include <unistd.h>

int main() {
    std::puts(anotherInstanceRuns() ? "another" : "alone");
    std::fflush(stdout);
    ::pause();
}
