#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quillara {

/// How much a subset of the cases is.
struct SubsetSize {
    std::int32_t Cases = 0;
    std::optional<double> Weight{};  ///< the sum of their weights; nothing: no weight is in force
};

enum class StepKind { Down, Up };

/// A drill step that was taken.
struct StepTaken {
    StepKind Kind = StepKind::Down;
    std::string Variable;
    std::string Category{};  ///< as the list of categories shows it; of a step up, and where it isn't known, empty
    std::optional<SubsetSize> Left{};  ///< what remained behind it; nothing: not counted
    bool IsAnew = false;  ///< a new choice of variables has undone all steps before it
    bool IsOfGroup = false;  ///< of a walk into each category of a variable, or of a script, which often is one

    /// What a step down keeps: "sex = Female".
    [[nodiscard]] std::string Condition() const { return Category.empty() ? Variable : Variable + " = " + Category; }
    /// For people: "Down: sex = Female", "Up: sex".
    [[nodiscard]] std::string Text() const;
};

/// The steps down that are in force behind the first `count` of these steps, in the order in which they were taken.
[[nodiscard]] std::vector<StepTaken> StepsInForce(std::span<const StepTaken> steps, std::size_t count);

}  // namespace quillara
