#pragma once

#include <ctime>

/// Processor time of this process, which other programs on the machine don't disturb much.
inline double ProcessorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}
