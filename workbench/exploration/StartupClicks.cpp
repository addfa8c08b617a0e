#include "workbench/exploration/StartupClicks.h"

#include <memory>

#include "host/AnalysisDialog.h"
#include "host/OleConstant.h"
#include "resources/ControlIds.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

/// What the dialog tells a recorder of a control; empty: nothing.
std::string ToldOf(AnalysisDocument& document, int control) {
    const std::unique_ptr<COleAConstant> told(DialogsOf(&document).Startup->RecordControlValue(control));
    return told == nullptr ? std::string() : told->Value();
}

/// Whether the current variable has intervals between boundaries of the user.
bool HasBoundaries(AnalysisDocument& document) {
    return !ToldOf(document, StatisticsGroup).empty();
}

/// The analysis draws the graph of brushing before it stores the page: the bars that are picked would be others than
/// those that are seen.
void ClickBrush(AnalysisDocument& document) {
    Window& startup = *document.StartupWindow();
    if (startup.At(UserIntervalsRadio).Checked && startup.At(BoundariesButton).Enabled && !HasBoundaries(document)) {
        startup.Click(BoundariesButton);
        if (!HasBoundaries(document)) {
            return;
        }
    }
    if (const Control& list = startup.At(DrillDownListControl); list.Enabled && list.Selected >= 0) {
        startup.ClickRow(DrillDownListControl, list.Selected);
    }
    startup.Click(BrushButton);
}

}  // namespace

std::string CurrentVariableOf(AnalysisDocument& document, int list) {
    return document.StartupWindow()->At(list).Rows.empty() ? std::string() : ToldOf(document, list);
}

void ClickInStartup(AnalysisDocument& document, int id) {
    if (id == BrushButton) {
        ClickBrush(document);
    } else {
        document.StartupWindow()->Click(id);
    }
}

}  // namespace quillara
