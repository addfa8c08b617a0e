#include "workbench/scripting/CategorizationEntry.h"

#include <sstream>
#include <string>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "workbench/data/Errors.h"
#include "workbench/numbers/DecimalNumber.h"
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

std::vector<double> ShownBoundaries(DialogActions& dialogs) {
    std::vector<double> bounds;
    dialogs.Press(BoundariesButton, [&bounds](Window& dialog) {
        std::istringstream text(dialog.At(BoundariesEdit).Text);
        for (std::string bound; text >> bound;) {
            bounds.push_back(DecimalNumber(bound).value_or(0.0));
        }
        dialog.Close(CancelCommand);
    });
    return bounds;
}

}  // namespace

std::optional<Categorization> ReadCategorization(DialogActions& dialogs) {
    int radio = DistinctValuesRadio;
    while (radio < UserIntervalsRadio && !dialogs.At(radio).Checked) {
        ++radio;
    }
    if (!dialogs.At(ExactIntervalsRadio).Enabled || !dialogs.At(radio).Checked) {
        return std::nullopt;
    }
    Categorization shown;
    shown.Method = radio - DistinctValuesRadio;
    if (radio == ExactIntervalsRadio || radio == NeatIntervalsRadio) {
        shown.Count =
            static_cast<int>(dialogs.At(radio == ExactIntervalsRadio ? ExactCountField : NeatCountField).Number);
    } else if (radio == StepIntervalsRadio) {
        shown.StepSize = dialogs.At(StepSizeField).Number;
        shown.StepStart = dialogs.At(StepStartField).Number;
        shown.StartAtMin = dialogs.At(StartAtMinimumBox).Checked;
    } else if (radio == UserIntervalsRadio) {
        shown.Bounds = ShownBoundaries(dialogs);
    }
    return shown;
}

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
