// What dialogs tell a recorder of steps.

#include <memory>
#include <new>
#include <optional>
#include <string>

#include "host/AnalysisDialog.h"
#include "host/ControlTable.h"
#include "host/OleConstant.h"
#include "workbench/hosting/ControlRows.h"
#include "workbench/hosting/ControlValues.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/StepHistory.h"
#include "workbench/hosting/StepRecorder.h"
#include "workbench/hosting/Surroundings.h"

using quillara::RecordedValue;
using quillara::StepRecorder;

namespace {

StepRecorder* RecorderOf(const CAnalysisDialog& dialog) {
    return quillara::SurroundingsOf(DialogHost::DocumentOf(dialog)).Services.Recorder;
}

/// The value of a control now; null when it has none.
std::unique_ptr<COleAConstant> ValueNow(CAnalysisDialog& dialog, int control) {
    return std::unique_ptr<COleAConstant>(dialog.RecordControlValue(control));
}

/// The values of all controls of the table, those that were kept early as they were then.
std::vector<RecordedValue> ValuesOf(CAnalysisDialog& dialog) {
    const DialogHost& host = DialogHost::Of(dialog);
    std::vector<RecordedValue> values;
    for (const ControlRow* row = host.Controls; row != nullptr && row->Control != 0; ++row) {
        if (row->Mode != HasValue) {
            continue;
        }
        if (const auto early = host.EarlyValues.find(row->Control); early != host.EarlyValues.end()) {
            values.push_back({row, early->second});
        } else if (const auto now = ValueNow(dialog, row->Control)) {
            values.push_back({row, now->Value()});
        }
    }
    return values;
}

}  // namespace

void CAnalysisDialog::SetControlTable(const ControlRow* table) {
    Side->Controls = table;
}

COleAConstant* CAnalysisDialog::RecordControlValue(int id) {
    try {
        const std::optional<std::string> value = quillara::RecordedValueOf(*this, id);
        return value ? new COleAConstant(*value) : nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;  // a line of a recording isn't worth a step
    }
}

void CAnalysisDialog::EarlyRecordState(int id) {
    DialogHost::Trace(*this, "EarlyRecordState " + std::to_string(id));
    Side->EarlyValues.erase(id);
    if (const auto value = ValueNow(*this, id)) {
        Side->EarlyValues.emplace(id, value->Value());
    }
}

namespace {

/// The value of a control, the one kept early where there is one; empty when it has none.
std::string TextNow(CAnalysisDialog& dialog, int control) {
    const auto& early = DialogHost::Of(dialog).EarlyValues;
    if (const auto known = early.find(control); known != early.end()) {
        return known->second;
    }
    const auto now = ValueNow(dialog, control);
    return now == nullptr ? std::string() : now->Value();
}

}  // namespace

void CAnalysisModelessDialog::FinishRecordingDialog(int step, int kind, int control) {
    DialogHost::Trace(*this, "FinishRecordingDialog " + std::to_string(step) + " " + std::to_string(kind) + " " +
                                 std::to_string(control));
    quillara::StepsOf(DialogHost::DocumentOf(*this)).Begin(control, [this](int list) { return TextNow(*this, list); });
    if (StepRecorder* recorder = RecorderOf(*this)) {
        recorder->RecordStep(*DialogHost::DocumentOf(*this), ValuesOf(*this), control);
        RecordActionMethod(control);
    }
    Host().EarlyValues.clear();
}

void CAnalysisModelessDialog::RecordActionMethod(int control) {
    const ControlRow* row = quillara::RowOf(this, control);
    StepRecorder* recorder = RecorderOf(*this);
    if (recorder != nullptr && row != nullptr && row->Value == MethodValue) {
        recorder->RecordMethod(*DialogHost::DocumentOf(*this), control);
    }
}

void CAnalysisModelessDialog::RecordOutput(int control) {
    StepRecorder* recorder = RecorderOf(*this);
    if (recorder != nullptr && quillara::MakesOutput(this, control)) {
        recorder->RecordOutput(*DialogHost::DocumentOf(*this), control);
    }
}
