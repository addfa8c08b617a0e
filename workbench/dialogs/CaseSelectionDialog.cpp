#include "workbench/dialogs/CaseSelectionDialog.h"

#include <utility>

#include "platform/WindowMessages.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/dialogs/DialogIds.h"
#include "workbench/dialogs/SelectionExamples.h"

namespace quillara {
namespace {

using Dialog = CaseSelectionDialog;

// clang-format off
constexpr ControlResource Controls[] = {
    // Id                   Kind                        Caption                                                   X    Y    W    H
    {Dialog::AllCases,      ControlKind::RadioButton,   "&All cases",                                          {  7,   8, 246,  10}},
    {Dialog::SelectedCases, ControlKind::RadioButton,   "&Cases for which this is true:",                      {  7,  22, 246,  10}},
    {Dialog::Formula,       ControlKind::MultiLineEdit, "",                                                    { 18,  35, 235,  52}},
    {NoControlId,           ControlKind::HelpText,      "Examples:",                                           { 18,  91,  38,   9}},
    {Dialog::Examples,      ControlKind::HelpText,      "",                                                    { 58,  91, 195,  18}},
    {OkCommand,             ControlKind::DefaultButton, "OK",                                                  {149, 116,  50,  14}},
    {CancelCommand,         ControlKind::Button,        "Cancel",                                              {203, 116,  50,  14}},
};
// clang-format on

constexpr DialogResource Resource{CaseSelectionDialogId, "Select cases", 260, 137, Controls};

std::string ExamplesOf(const DataTable& table) {
    std::string text;
    for (const std::string& example : SelectionExamples(table)) {
        text += (text.empty() ? "" : "     ") + example;
    }
    return text;
}

}  // namespace

CaseSelectionDialog::CaseSelectionDialog(MessageQueue& queue, const DataTable& table,
                                         const std::optional<std::string>& formula, Tell tell)
    : HostDialog(queue, Resource, std::move(tell)), Table(table) {
    At(formula ? SelectedCases : AllCases).Checked = true;
    At(Formula).Text = formula.value_or("");
    At(Examples).Text = ExamplesOf(table);
    Update();
}

void CaseSelectionDialog::Accept() {
    Chosen = {};
    if (At(SelectedCases).Checked) {
        const std::string& formula = At(Formula).Text;
        Chosen.Formula = formula;
        Chosen.Results = SelectCases(Table, formula, &Chosen.Notices);
    }
}

void CaseSelectionDialog::Update() {
    At(Formula).Enabled = At(SelectedCases).Checked;
}

}  // namespace quillara
