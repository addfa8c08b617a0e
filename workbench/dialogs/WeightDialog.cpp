#include "workbench/dialogs/WeightDialog.h"

#include <utility>

#include "platform/WindowMessages.h"
#include "workbench/data/Errors.h"
#include "workbench/dialogs/DialogIds.h"

namespace quillara {
namespace {

using Dialog = WeightDialog;

// clang-format off
constexpr ControlResource Controls[] = {
    // Id                    Kind                        Caption                     X    Y    W    H
    {Dialog::NoWeight,       ControlKind::CheckBox,      "&No weight",            {  7,   8, 186,  10}},
    {NoControlId,            ControlKind::Static,        "&Weight variable:",     {  7,  24, 186,   9}},
    {Dialog::VariableList,   ControlKind::ReportList,    "",                      {  7,  35, 186, 110}},
    {Dialog::DeclaredWeight, ControlKind::HelpText,      "",                      {  7, 149, 186,   9}},
    {OkCommand,              ControlKind::DefaultButton, "OK",                    { 89, 166,  50,  14}},
    {CancelCommand,          ControlKind::Button,        "Cancel",                {143, 166,  50,  14}},
};
// clang-format on

constexpr DialogResource Resource{WeightDialogId, "Weight", 200, 187, Controls};

void FillList(Control& list, const DataTable& table, std::optional<std::size_t> selected) {
    list.Columns = {{"Name", 110}, {"Label", 190}};
    for (std::size_t i = 0; i < table.Variables.size(); ++i) {
        const Variable& variable = table.Variables[i];
        if (variable.Kind == ValueKind::Text) {
            continue;
        }
        if (selected == i) {
            list.Selected = static_cast<int>(list.ReportRows.size());
        }
        list.ReportRows.push_back(NumberedRow(static_cast<int>(i) + 1, {variable.Name, variable.LongName}));
    }
}

}  // namespace

WeightDialog::WeightDialog(MessageQueue& queue, const DataTable& table, const WeightChoice& present, Tell tell)
    : HostDialog(queue, Resource, std::move(tell)) {
    FillList(At(VariableList), table, present.Variable);
    At(NoWeight).Checked = !present.InForce;
    if (table.Weight) {
        At(DeclaredWeight).Text = "The file declares " + table.Variables[*table.Weight].Name + " as its weight.";
    }
    Update();
}

void WeightDialog::Accept() {
    const ReportRow* selected = SelectedRow(At(VariableList));
    const bool inForce = !At(NoWeight).Checked;
    if (inForce && selected == nullptr) {
        throw UsageError("Choose the variable that gives the weights, or \"No weight\".");
    }
    Chosen.InForce = inForce;
    if (selected != nullptr) {
        Chosen.Variable = static_cast<std::size_t>(NumberOf(*selected)) - 1;
    }
}

void WeightDialog::Update() {
    At(VariableList).Enabled = !At(NoWeight).Checked;
}

}  // namespace quillara
