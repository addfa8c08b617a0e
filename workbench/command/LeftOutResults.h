#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "workbench/documents/Remarks.h"

namespace quillara {

/// Why a result shows nothing.
enum class LeftOutBecause : std::uint8_t {
    DoesNotApply,
    HasNothing,  ///< it applies, but there is nothing to show
    StepOnMissing,  ///< which leaves a plot of review variables without cases
};

/// The results that the user named and that show nothing.
class LeftOutResults {
  public:
    /// A place where results are shown: so many steps are done.
    void ShowAt(int step) { ShownAt.insert(step); }
    /// The result of a button shows nothing there.
    void LeaveOut(int button, LeftOutBecause reason);

    /// One for each of them, in their order: its name, the places if it is shown at others, why, and what gives it.
    [[nodiscard]] std::vector<Remark> AsRemarks() const;

  private:
    /// A result, and after which steps it is left out for one reason.
    struct Omission {
        int Button;
        LeftOutBecause Reason;
        std::set<int> Steps;
    };

    std::set<int> ShownAt;
    std::vector<Omission> Omissions;
};

}  // namespace quillara
