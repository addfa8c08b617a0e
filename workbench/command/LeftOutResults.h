#pragma once

#include <set>
#include <string>
#include <vector>

namespace quillara {

/// The results that the user named and that aren't among those shown.
class LeftOutResults {
  public:
    /// A place where results are shown: so many steps are done.
    void ShowAt(int step) { ShownAt.insert(step); }
    /// The result of a button doesn't apply there, or applies and has nothing to show.
    void LeaveOut(int button, bool applies);

    /// One line for each of them, in their order: its name, the places if it is shown at others, and why.
    [[nodiscard]] std::vector<std::string> Lines() const;

  private:
    /// A result, and after which steps it is left out for one reason.
    struct Omission {
        int Button;
        bool Applies;
        std::set<int> Steps;
    };

    std::set<int> ShownAt;
    std::vector<Omission> Omissions;
};

}  // namespace quillara
