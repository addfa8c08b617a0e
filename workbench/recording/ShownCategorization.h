#pragma once

#include <string>
#include <vector>

class CAnalysisDialog;

namespace quillara {

class Window;

/// What the Categorization page of a startup dialog shows.
struct ShownCategorization {
    int Method = -1;  ///< by the radio buttons, from 0; -1: none
    double ExactCount = 0.0;
    double NeatCount = 0.0;
    double StepSize = 0.0;
    double StepStart = 0.0;
    bool StartsAtMinimum = false;
    bool CanBeChanged = false;  ///< a continuous variable is the current one

    static constexpr int UserIntervals = 5;

    [[nodiscard]] static ShownCategorization In(Window& startup);
    /// Whether storing the one instead of the other makes no difference.
    [[nodiscard]] bool IsLike(const ShownCategorization& other) const;
};

/// The lines that make a page which shows `before` show `page`: the radio button, then its fields.
[[nodiscard]] std::vector<std::string> CategorizationLines(const CAnalysisDialog& dialog,
                                                           const ShownCategorization& page,
                                                           const ShownCategorization& before);

}  // namespace quillara
