#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quillara {

/// The results that the user named and that didn't apply where results were shown.
class LeftOutResults {
  public:
    /// A place where results are shown: so many steps are done.
    void ShowAt(int step) { ShownAt.insert(step); }
    /// The result of a button doesn't apply there.
    void LeaveOut(int button);

    /// One line for each of them, in their order: its name, the places if it is shown at others, and what it needs.
    [[nodiscard]] std::vector<std::string> Lines() const;

  private:
    std::set<int> ShownAt;
    std::vector<std::pair<int, std::set<int>>> Places;  // by button
};

}  // namespace quillara
