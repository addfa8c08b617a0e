#include "workbench/formats/WorkMonitor.h"

#include <algorithm>
#include <utility>

#include "workbench/data/Errors.h"

namespace quillara {

ProgressTaker PartOf(const ProgressTaker& whole, double firstShare, double lastShare) {
    if (!whole) {
        return {};
    }
    return [=](double share) { whole(firstShare + share * (lastShare - firstShare)); };
}

WorkMonitor::WorkMonitor(ProgressTaker progress, std::function<bool()> cancelled, MemoryLimit memory)
    : Progress(std::move(progress)), Cancelled(std::move(cancelled)), Memory(memory) {}

void WorkMonitor::Enter(double firstShare, double lastShare, std::size_t units) {
    FirstShare = firstShare;
    LastShare = lastShare;
    Share = firstShare;
    Units = units;
    Done = 0;
    DoneAtLook = 0;
    Look();
}

void WorkMonitor::MoveTo(double part) {
    Share = ShareAt(part);
    Look();
}

void WorkMonitor::Check() const {
    if (Cancelled && Cancelled()) {
        throw Interrupted();
    }
}

void WorkMonitor::Finish() const {
    Check();
    if (Progress) {
        Progress(1);
    }
}

void WorkMonitor::Look() {
    constexpr std::chrono::milliseconds pause(20);
    DoneAtLook = Done;
    if (Units > 0) {
        // What the work counts may be an estimate.
        Share = ShareAt(std::min(1.0, static_cast<double>(Done) / static_cast<double>(Units)));
    }
    const auto now = std::chrono::steady_clock::now();
    if (now - LastReport < pause) {
        return;
    }
    LastReport = now;
    Check();
    Memory.Require();
    if (Counted && Units == 0 && Done > 0) {
        Counted(Done);
    } else if (Progress) {
        // Work that is begun again is told when it is farther than before.
        MostTold = std::max(MostTold, Share);
        Progress(MostTold);
    }
}

}  // namespace quillara
