#include "workbench/recording/ShownCategorization.h"

#include "resources/ControlIds.h"
#include "workbench/numbers/ExactNumbers.h"
#include "workbench/recording/RecordedMembers.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

enum Method : int { ExactIntervals = 1, NeatIntervals = 2, StepIntervals = 3 };

int CheckedMethod(Window& startup) {
    for (int radio = DistinctValuesRadio; radio <= UserIntervalsRadio; ++radio) {
        if (startup.At(radio).Checked) {
            return radio - DistinctValuesRadio;
        }
    }
    return -1;
}

/// Writes members of one dialog.
class PageLines {
  public:
    explicit PageLines(const CAnalysisDialog& dialog) : Dialog(dialog) {}

    void Add(int control, double value) {
        Lines.push_back("drill." + MemberOf(Dialog, control) + " = " + ExactNumberText(value));
    }
    std::vector<std::string> Lines;

  private:
    const CAnalysisDialog& Dialog;
};

/// Where the steps start can be entered only while they don't start at the minimum, and is kept all the same.
void AddStep(PageLines& lines, const ShownCategorization& page, const ShownCategorization& before) {
    const double startBefore = before.Method == StepIntervals ? before.StepStart : 0.0;
    lines.Add(StepSizeField, page.StepSize);
    if (!page.StartsAtMinimum || page.StepStart != startBefore) {
        lines.Add(StartAtMinimumBox, 0);
        lines.Add(StepStartField, page.StepStart);
    }
    if (page.StartsAtMinimum) {
        lines.Add(StartAtMinimumBox, 1);
    }
}

}  // namespace

ShownCategorization ShownCategorization::In(Window& startup) {
    return {CheckedMethod(startup),
            startup.At(ExactCountField).Number,
            startup.At(NeatCountField).Number,
            startup.At(StepSizeField).Number,
            startup.At(StepStartField).Number,
            startup.At(StartAtMinimumBox).Checked,
            startup.At(ExactIntervalsRadio).Enabled};
}

bool ShownCategorization::IsLike(const ShownCategorization& other) const {
    if (!CanBeChanged || Method != other.Method) {
        return !CanBeChanged;
    }
    const bool sameStep =
        StepSize == other.StepSize && StepStart == other.StepStart && StartsAtMinimum == other.StartsAtMinimum;
    return (Method != ExactIntervals || ExactCount == other.ExactCount) &&
           (Method != NeatIntervals || NeatCount == other.NeatCount) && (Method != StepIntervals || sameStep);
}

std::vector<std::string> CategorizationLines(const CAnalysisDialog& dialog, const ShownCategorization& page,
                                             const ShownCategorization& before) {
    PageLines lines(dialog);
    lines.Add(DistinctValuesRadio + page.Method, 1);
    if (page.Method == ExactIntervals) {
        lines.Add(ExactCountField, page.ExactCount);
    } else if (page.Method == NeatIntervals) {
        lines.Add(NeatCountField, page.NeatCount);
    } else if (page.Method == StepIntervals) {
        AddStep(lines, page, before);
    }
    return lines.Lines;
}

}  // namespace quillara
