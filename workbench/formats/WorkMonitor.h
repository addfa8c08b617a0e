#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <utility>

#include "workbench/formats/MemoryLimit.h"

namespace quillara {

/// Told how much of a work is done, rising from 0 to 1; may be empty.
using ProgressTaker = std::function<void(double share)>;

/// What a part of a work tells that leads from one share of it to another.
[[nodiscard]] ProgressTaker PartOf(const ProgressTaker& whole, double firstShare, double lastShare);

/// Follows a long piece of work: tells how much of it is done, asks whether it is to end and looks whether it takes too
/// much memory, every 20 milliseconds or so however often the work calls it. Whatever throws Interrupted for a
/// cancelled work throws DataError when it takes too much.
class WorkMonitor {
  public:
    /// Either function may be empty.
    explicit WorkMonitor(ProgressTaker progress = {}, std::function<bool()> cancelled = {},
                         MemoryLimit memory = MemoryLimit(MemoryLimit::Unlimited));

    /// Of a stage whose length nobody knows, `counted` is told how many units are done, in place of a share.
    void TellCountsTo(std::function<void(std::size_t units)> counted) { Counted = std::move(counted); }
    /// A stage begins that leads from one share of the whole work to another. Of 0 units: MoveTo tells how far it is.
    void Enter(double firstShare, double lastShare, std::size_t units = 0);
    /// Counts units of the stage as done. Throws Interrupted when the work was cancelled.
    void Advance(std::size_t units = 1) {
        Done += units;
        if (Done - DoneAtLook >= UnitsPerLook) {
            Look();
        }
    }
    /// So much of the stage, from 0 to 1, is done. Throws Interrupted when the work was cancelled.
    void MoveTo(double part);
    /// The work is about to take so many more bytes at once. Throws DataError when they are too many.
    void RequireMemory(std::size_t bytes) const { Memory.Require(bytes); }
    /// Asks at once. Throws Interrupted when the work was cancelled.
    void Check() const;
    /// The whole work is done: asks a last time, then tells the share 1. Throws Interrupted when it was cancelled.
    void Finish() const;

  private:
    static constexpr std::size_t UnitsPerLook = 4096;  // less than a millisecond's work

    void Look();
    [[nodiscard]] double ShareAt(double part) const { return FirstShare + part * (LastShare - FirstShare); }

    ProgressTaker Progress;
    std::function<void(std::size_t)> Counted;
    std::function<bool()> Cancelled;
    MemoryLimit Memory;
    std::chrono::steady_clock::time_point LastReport = std::chrono::steady_clock::now();
    double FirstShare = 0;
    double LastShare = 0;
    double Share = 0;
    double MostTold = 0;
    std::size_t Units = 0;
    std::size_t Done = 0;
    std::size_t DoneAtLook = 0;
};

}  // namespace quillara
