#pragma once

#include <cstddef>
#include <functional>
#include <optional>
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
        std::optional<SubsetSize> Left{};  ///< what all of them together leave; nothing: not known

        /// For people: "All cases", or its steps: "sex = Female, age = 20<x<=30".
        [[nodiscard]] std::string Text() const;
    };

    /// What lies between two states.
    struct Change {
        std::vector<StepTaken> Taken;  ///< steps that only the second has
        std::vector<StepTaken> Undone;  ///< steps that only the first has
    };

    /// Looks at the exploration after a command: a new state follows the present one, and takes the place of those that
    /// had been undone.
    void Follow(Exploration& exploration);

    /// The states, the oldest first, and the place of the present one; there is always one.
    [[nodiscard]] const std::vector<State>& States() const { return Known; }
    [[nodiscard]] std::size_t Present() const { return Now; }
    [[nodiscard]] bool CanUndo() const { return Now > 0; }
    [[nodiscard]] bool CanRedo() const { return Now + 1 < Known.size(); }

    /// What leads from a state to another, by their places.
    [[nodiscard]] Change Between(std::size_t from, std::size_t to) const;

    /// Undoes the steps in force behind the first `count`: one new state. Throws as Exploration::Up; what has been
    /// undone then stands as a state.
    void BackTo(Exploration& exploration, std::size_t count);
    /// Brings the exploration into a state, by its place, with its steps in their order. Steps that both have stay
    /// where that is enough. Throws ImpossibleStep when a step of it can't be taken any more, as after its variable was
    /// categorized otherwise; steps taken on the way then stand as a state of their own.
    void GoTo(Exploration& exploration, std::size_t state);

  private:
    void Go(Exploration& exploration, const std::function<void()>& way);

    std::vector<State> Known{State{}};
    std::size_t Now = 0;
    bool IsGoing = false;
    std::string Variables;  // that can be or have been drilled on, in any order, as one text
    const void* Table = nullptr;
};

}  // namespace quillara
