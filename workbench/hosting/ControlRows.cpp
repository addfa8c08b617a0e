#include "workbench/hosting/ControlRows.h"

#include "host/AnalysisDialog.h"
#include "workbench/hosting/DialogHost.h"

namespace quillara {

const ControlRow* RowOf(const CAnalysisDialog* dialog, int control) {
    const ControlRow* row = dialog == nullptr ? nullptr : DialogHost::Of(*dialog).Controls;
    while (row != nullptr && row->Control != control) {
        row = row->Control == 0 ? nullptr : row + 1;
    }
    return control == 0 ? nullptr : row;
}

bool MakesOutput(const CAnalysisDialog* dialog, int control) {
    const ControlRow* row = RowOf(dialog, control);
    return row != nullptr && (row->Class == SpreadsheetButton || row->Class == GraphButton || row->Class == DataButton);
}

bool ChoosesVariables(const CAnalysisDialog* dialog, int control) {
    const ControlRow* row = RowOf(dialog, control);
    return row != nullptr && row->Class == VariablesButton;
}

}  // namespace quillara
