#pragma once

#include <array>
#include <map>
#include <vector>

namespace quillara {

/// The two lists that a dialog of variables was answered with, by number.
using TwoLists = std::array<std::vector<short>, 2>;

/// What has been chosen by the buttons that open the selection of variables. A button shows its choice in two captions,
/// which its command writes first after the choice; the captions tell from then on what of the choice still stands.
class VariablesChosen {
  public:
    /// The lists were confirmed in the command of a button.
    void Confirm(int button, TwoLists lists);
    /// A caption now names these variables.
    void Show(int caption, std::vector<short> variables);
    /// Another message is run: captions no longer follow a choice.
    void EndCommand() { Open = nullptr; }

    /// What was chosen by a button and still stands.
    [[nodiscard]] TwoLists Of(int button) const;

  private:
    struct Choice {
        TwoLists Lists;
        std::array<int, 2> Captions{};  // 0: not known yet
    };

    std::map<int, Choice> Choices;  // by button
    Choice* Open = nullptr;  // the captions of this one are written next
};

}  // namespace quillara
