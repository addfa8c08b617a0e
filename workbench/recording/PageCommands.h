#pragma once

#include <algorithm>
#include <array>

#include "resources/ControlIds.h"

namespace quillara {

/// Whether the button makes a result of the drill variables, and stores the Categorization page before.
constexpr bool StoresPage(int control) {
    constexpr std::array buttons{SummaryButton,    DescriptivesButton, FrequenciesButton,
                                 HistogramsButton, PieChartsButton,    StackedPlotsButton};
    return std::ranges::find(buttons, control) != buttons.end();
}

/// Whether a command stores the page, or works on it.
constexpr bool ActsOnPage(int control) {
    constexpr std::array controls{DrillDownListControl, DownButton, BrushButton, StartAtMinimumBox, BoundariesButton};
    const bool isRadio = control >= DistinctValuesRadio && control <= UserIntervalsRadio;
    return isRadio || StoresPage(control) || std::ranges::find(controls, control) != controls.end();
}

/// Whether a command stores nothing but the page, takes a step down or works on the page: what clicks in the list have
/// stored before needn't be written yet.
constexpr bool LeavesListClicks(int control) {
    return ActsOnPage(control) && !StoresPage(control) && control != BrushButton;
}

}  // namespace quillara
