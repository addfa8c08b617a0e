#include "workbench/hosting/ControlValues.h"

#include <charconv>
#include <cmath>
#include <iterator>

#include "host/AnalysisDialog.h"
#include "workbench/documents/WideText.h"
#include "workbench/hosting/ControlRows.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/hosting/VariableNotation.h"

namespace quillara {
namespace {

/// The selected row of a list; empty without one.
std::string SelectedText(const Control& list) {
    const auto row = static_cast<std::size_t>(list.Selected);
    if (list.Selected < 0) {
        return {};
    }
    if (list.Kind == ControlKind::ListBox) {
        return row < list.Rows.size() ? list.Rows[row] : std::string();
    }
    return row < list.ReportRows.size() && !list.ReportRows[row].Cells.empty() ? list.ReportRows[row].Cells.front()
                                                                               : std::string();
}

std::string VariablesBy(const CAnalysisDialog& dialog, int button) {
    CAnalysisDoc* document = DialogHost::DocumentOf(dialog);
    return TextOfLists(TableOf(document).Table(), DialogsOf(document).Chosen.Of(button));
}

}  // namespace

OwnedVariant ValueOf(const CAnalysisDialog& dialog, const Control& control) {
    if (control.IsCheck()) {
        return OwnedVariant::OfInteger(control.Checked ? 1 : 0);
    }
    if (!control.IsNumberField()) {
        return OwnedVariant::OfText(WideText(TextOf(dialog, control)));
    }
    if (!control.HasNumber) {
        return {};
    }
    return control.Kind == ControlKind::RealField
               ? OwnedVariant::OfReal(control.Number)
               : OwnedVariant::OfInteger(static_cast<std::int32_t>(std::lround(control.Number)));
}

std::string TextOf(const CAnalysisDialog& dialog, const Control& control) {
    if (ChoosesVariables(&dialog, control.Id)) {
        return VariablesBy(dialog, control.Id);
    }
    if (control.IsNumberField()) {
        return control.HasNumber ? NumberText(control.Number) : std::string();
    }
    return control.IsList() ? SelectedText(control) : control.Text;
}

std::string NumberText(double number) {
    char text[32];
    return {text, std::to_chars(std::begin(text), std::end(text), number).ptr};
}

std::optional<std::string> RecordedValueOf(const CAnalysisDialog& dialog, int id) {
    const ControlRow* row = RowOf(&dialog, id);
    Window* window = DialogHost::WindowOf(dialog);
    const Control* control = window == nullptr ? nullptr : window->Find(id);
    if (row == nullptr || row->Mode != HasValue || control == nullptr ||
        (control->IsNumberField() && !control->HasNumber)) {
        return std::nullopt;
    }
    return control->IsCheck() ? std::string(control->Checked ? "1" : "0") : TextOf(dialog, *control);
}

}  // namespace quillara
