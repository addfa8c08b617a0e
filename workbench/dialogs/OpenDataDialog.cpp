#include "workbench/dialogs/OpenDataDialog.h"

#include <utility>

#include "platform/WindowMessages.h"
#include "workbench/data/Errors.h"
#include "workbench/dialogs/DialogIds.h"
#include "workbench/formats/DataFile.h"

namespace quillara {
namespace {

using Dialog = OpenDataDialog;

// clang-format off
constexpr ControlResource Controls[] = {
    // Id               Kind                        Caption                                  X    Y    W    H
    {Dialog::FromFile,  ControlKind::RadioButton,   "A data &file:",                      {  7,   8, 246,  10}},
    {Dialog::Path,      ControlKind::Edit,          "",                                   { 18,  21, 235,  13}},
    {Dialog::FromRun,   ControlKind::RadioButton,   "A &table made in this session:",     {  7,  42, 246,  10}},
    {Dialog::TableList, ControlKind::ReportList,    "",                                   { 18,  55, 235,  64}},
    {OkCommand,         ControlKind::DefaultButton, "Open",                               {149, 126,  50,  14}},
    {CancelCommand,     ControlKind::Button,        "Cancel",                             {203, 126,  50,  14}},
};
// clang-format on

constexpr DialogResource Resource{OpenDataDialogId, "Open data", 260, 147, Controls};

void FillList(Control& list, const OpenDataDialog::Tables& tables) {
    list.Columns = {{"Name", 220}, {"Cases", 70}, {"Variables", 70}};
    for (const auto& table : tables) {
        const auto place = static_cast<int>(list.ReportRows.size());
        list.ReportRows.push_back(NumberedRow(
            place, {table->FileName, std::to_string(table->Cases), std::to_string(table->Variables.size())}));
    }
    list.Selected = static_cast<int>(tables.size()) - 1;
}

}  // namespace

OpenDataDialog::OpenDataDialog(MessageQueue& queue, Tables tables, Tell tell)
    : HostDialog(queue, Resource, std::move(tell)), OfRun(std::move(tables)) {
    FillList(At(TableList), OfRun);
    At(FromFile).Checked = true;
    At(FromRun).Enabled = !OfRun.empty();
    Update();
}

std::shared_ptr<const DataTable> OpenDataDialog::OpenFile(const std::string& path) {
    if (path.empty()) {
        throw UsageError("Give the path of a data file.");
    }
    if (path != Read.FilePath) {
        return std::make_shared<DataTable>(ReadDataFile(path));
    }
    if (Read.Table == nullptr) {
        throw DataError(Read.Failure);
    }
    return Read.Table;
}

std::shared_ptr<const DataTable> OpenDataDialog::Open() {
    if (At(FromRun).Checked) {
        const ReportRow* selected = SelectedRow(At(TableList));
        if (selected == nullptr) {
            throw UsageError("Choose a table from the list.");
        }
        return OfRun[static_cast<std::size_t>(NumberOf(*selected))];
    }
    return OpenFile(At(Path).Text);
}

void OpenDataDialog::Accept() {
    Table = Open();
    if (Table != Read.Table) {
        Read = {};
    }
}

void OpenDataDialog::Update() {
    At(Path).Enabled = At(FromFile).Checked;
    At(TableList).Enabled = At(FromRun).Checked;
}

}  // namespace quillara
