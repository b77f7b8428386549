#include "figures/ProcessorTime.h"

#include <ctime>
#include <stdexcept>

double processorSecondsOf(qint64 processIdentifier) {
    clockid_t clock{};
    timespec time{};
    if (clock_getcpuclockid(static_cast<pid_t>(processIdentifier), &clock) != 0 ||
        clock_gettime(clock, &time) != 0)
        throw std::runtime_error("the processor time of a process can't be read");
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}
