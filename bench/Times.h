#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

#include "bench/ProcessorTime.h"

/// Which clock a run is measured by.
enum class Clock {
    Processor,  ///< of all threads together; other programs on the machine don't disturb it much
    Elapsed,  ///< for runs on several threads
};

inline double SecondsOf(Clock clock) {
    return clock == Clock::Processor
               ? ProcessorSeconds()
               : std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Runs something and gives the seconds that it took.
template <typename Run>
double SecondsOf(Clock clock, Run run) {
    const double start = SecondsOf(clock);
    run();
    return SecondsOf(clock) - start;
}

/// The seconds of one of the things that are run in turns.
class Times {
  public:
    void Add(double seconds) { Seconds.push_back(seconds); }
    /// The upper one of two in the middle.
    [[nodiscard]] double Median() const {
        std::vector<double> sorted = Seconds;
        const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
        std::nth_element(sorted.begin(), middle, sorted.end());
        return *middle;
    }

  private:
    std::vector<double> Seconds;
};
