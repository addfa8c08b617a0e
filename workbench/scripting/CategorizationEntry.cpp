#include "workbench/scripting/CategorizationEntry.h"

#include <string>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "workbench/data/Errors.h"
#include "workbench/numbers/ExactNumbers.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

constexpr std::size_t LongestBoundaries = 2047;  ///< what the edit of the boundaries is read up to

std::string BoundariesText(const std::vector<double>& bounds) {
    std::string text;
    for (const double bound : bounds) {
        text += (text.empty() ? "" : " ") + ExactNumberText(bound);
    }
    if (text.size() > LongestBoundaries) {
        throw DataError("The boundaries have too many digits in all; give fewer of them, or round them.");
    }
    return text;
}

void EnterStep(DialogActions& dialogs, const Categorization& chosen) {
    dialogs.TypeNumber(StepSizeField, chosen.StepSize);
    if (dialogs.At(StartAtMinimumBox).Checked != chosen.StartAtMin) {
        dialogs.Press(StartAtMinimumBox);
    }
    if (!chosen.StartAtMin) {
        dialogs.TypeNumber(StepStartField, chosen.StepStart);
    }
}

void EnterBoundaries(DialogActions& dialogs, const Categorization& chosen) {
    const std::string text = BoundariesText(chosen.Bounds);
    dialogs.Press(BoundariesButton, [&text](Window& dialog) {
        dialog.Type(BoundariesEdit, text);
        dialog.Click(OkCommand);
    });
}

}  // namespace

void EnterCategorization(DialogActions& dialogs, const Categorization& chosen) {
    const int method = DistinctValuesRadio + chosen.Method;
    dialogs.Press(method);
    switch (method) {
        case ExactIntervalsRadio:
            dialogs.TypeNumber(ExactCountField, chosen.Count);
            break;
        case NeatIntervalsRadio:
            dialogs.TypeNumber(NeatCountField, chosen.Count);
            break;
        case StepIntervalsRadio:
            EnterStep(dialogs, chosen);
            break;
        case UserIntervalsRadio:
            EnterBoundaries(dialogs, chosen);
            break;
        default:
            break;
    }
}

}  // namespace quillara
