#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "workbench/documents/StepTaken.h"

namespace quillara {

class Exploration;

/// The states that an exploration has been in: which steps were in force. A state is come back to by steps up and down,
/// as a person would; it is the same when it leaves the same cases. A new choice of variables, or another table, begins
/// it anew.
class ExplorationHistory {
  public:
    /// A state, by the steps in force in it.
    struct State {
        std::vector<StepTaken> Steps;

        /// For people: "All cases", or its steps: "sex = Female, age = 20<x<=30".
        [[nodiscard]] std::string Text() const;
    };

    /// Looks at the exploration after a command: a new state follows the present one, and takes the place of those that
    /// had been undone.
    void Follow(Exploration& exploration);

    /// The states, the oldest first, and the place of the present one; there is always one.
    [[nodiscard]] const std::vector<State>& States() const { return Known; }
    [[nodiscard]] std::size_t Present() const { return Now; }
    [[nodiscard]] bool CanUndo() const { return Now > 0; }
    [[nodiscard]] bool CanRedo() const { return Now + 1 < Known.size(); }

    /// Brings the exploration into a state, by its place. Steps that both have stay where that is enough. Throws
    /// ImpossibleStep when a step of it can't be taken any more, as after its variable was categorized otherwise; steps
    /// taken on the way then stand as a state of their own.
    void GoTo(Exploration& exploration, std::size_t state);

  private:
    std::vector<State> Known{State{}};
    std::size_t Now = 0;
    bool IsGoing = false;
    std::string Variables;  // that can be or have been drilled on, in any order, as one text
    const void* Table = nullptr;
};

}  // namespace quillara
