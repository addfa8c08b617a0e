#include "dialogs/CategorizationPage.h"

#include <array>

#include "dialogs/BoundariesDlg.h"
#include "dialogs/DefineTask.h"
#include "host/WindowServices.h"
#include "resources/ControlIds.h"

using namespace drilldown;

namespace {

constexpr int FewestIntervals = 2;
constexpr int MostIntervals = 999;
constexpr int RestingCount = 10;
constexpr double LargestStep = 1.7e308;
constexpr double RestingStep = 1.0;
constexpr int RestingFormat = 2;  // number formats of the host
constexpr int RecordFormat = 3;
constexpr int MethodCount = static_cast<int>(Methods.size());

/// The field of the number of intervals, by method; 0: none.
constexpr std::array<int, Methods.size()> CountFields{0, ExactCountField, NeatCountField, 0, 0, 0};

static_assert(DistinctValuesRadio + MethodCount - 1 == UserIntervalsRadio);

constexpr int RadioOf(int method) {
    return DistinctValuesRadio + method;
}

MethodInput InputOf(const CDefineTask& task) {
    return FactsOf(task.CatMethod).Input;
}

int CountFieldOf(const CDefineTask& task) {
    return CountFields[static_cast<std::size_t>(task.CatMethod)];
}

/// Steps start at a given value only when they don't start at the minimum.
void EnableStepStart(CDefineTask& task) {
    for (const int id : {StartingAtLabel, StepStartField}) {
        task.EnableWindow(task.Window, id, task.CatStartAtMin == 0);
    }
}

/// Lets the user edit what belongs to the method; the inputs are at rest before.
void OpenInputs(CDefineTask& task) {
    const MethodInput input = InputOf(task);
    if (input == MethodInput::Count) {
        task.EnableWindow(task.Window, CountFieldOf(task), true);
    } else if (input == MethodInput::Boundaries) {
        task.EnableWindow(task.Window, BoundariesButton, true);
    } else if (input == MethodInput::Steps) {
        task.EnableWindow(task.Window, StepSizeField, true);
        EnableStepStart(task);
        task.EnableWindow(task.Window, OrLabel, true);
        task.EnableWindow(task.Window, StartAtMinimumBox, true);
        task.CheckDlgButton(task.Window, StartAtMinimumBox, task.CatStartAtMin == 1);
    }
}

void WriteValues(CDefineTask& task) {
    const MethodInput input = InputOf(task);
    if (input == MethodInput::Count) {
        task.SetDlgItemInt(task.Window, CountFieldOf(task), task.CatCount, 0);
    } else if (input == MethodInput::Steps) {
        task.SetDlgItemDouble(task.Window, StepSizeField, task.CatStepSize, 0, RecordFormat);
        task.SetDlgItemDouble(task.Window, StepStartField, task.CatStepStart, 0, RecordFormat);
    }
}

/// Fields that can't be read leave the scratch values as they were.
void ReadValues(CDefineTask& task) {
    const MethodInput input = InputOf(task);
    if (input == MethodInput::Count) {
        task.GetDlgItemInteger(task.Window, CountFieldOf(task), &task.CatCount);
    } else if (input == MethodInput::Steps) {
        task.GetDlgItemDouble(task.Window, StepSizeField, &task.CatStepSize);
        task.GetDlgItemDouble(task.Window, StepStartField, &task.CatStepStart);
        task.CatStartAtMin = task.IsDlgButtonChecked(task.Window, StartAtMinimumBox) ? 1 : 0;
    }
}

void ShowMethod(CDefineTask& task) {
    task.CheckDlgButton(task.Window, RadioOf(task.CatMethod), true);
    OpenInputs(task);
    WriteValues(task);
}

const Drill* CurrentRecord(const CDefineTask& task) {
    return CDrillDown::FindRecord(task.Analysis->DrillDowns, task.Analysis->CurrentDown);
}

/// The scratch values of a record, all but the method.
void TakeParameters(CDefineTask& task, const Drill& record) {
    task.CatVarType = record.VarType;
    task.CatCount = static_cast<std::int16_t>(record.IntervalCount());
    task.CatStartAtMin = static_cast<std::uint16_t>(record.StartAtMin);
    task.CatStepSize = record.StepSize;
    task.CatStepStart = record.StepStart;
}

bool SaysTheSame(const CDefineTask& task, const Drill& record) {
    const MethodFacts& method = FactsOf(task.CatMethod);
    const bool sameCount = method.Count == nullptr || record.*method.Count == task.CatCount;
    const bool sameSteps = method.Input != MethodInput::Steps ||
                           (record.StartAtMin == task.CatStartAtMin && record.StepSize == task.CatStepSize &&
                            record.StepStart == task.CatStepStart);
    return record.Method == task.CatMethod && sameCount && sameSteps;
}

void Store(const CDefineTask& task, Drill& record) {
    const MethodFacts& method = FactsOf(task.CatMethod);
    const bool hasSteps = method.Input == MethodInput::Steps;
    record.Method = task.CatMethod;
    record.ExactCount = record.NeatCount = method.Count != nullptr ? task.CatCount : 0;
    record.StepSize = hasSteps ? task.CatStepSize : 0.0;
    record.StepStart = hasSteps ? task.CatStepStart : 0.0;
    record.StartAtMin = hasSteps ? task.CatStartAtMin : 0;
    (record.*method.Build)();
}

/// Puts a field of step size or start to rest.
void RestReal(CDefineTask& task, int field, double value) {
    task.EnableWindow(task.Window, field, false);
    task.SetDlgItemDouble(task.Window, field, value, 0, RestingFormat);
}

}  // namespace

void CDefineTask::ResetCategorizationControls() {
    for (const int field : {ExactCountField, NeatCountField}) {
        EnableWindow(Window, field, false);
        SetIntEditRange(GetDlgItem(Window, field), FewestIntervals, MostIntervals);
        SetDlgItemInt(Window, field, RestingCount, 0);
    }
    SetRealEditRange(GetDlgItem(Window, StepSizeField), 0.0, LargestStep, 1);
    RestReal(*this, StepSizeField, RestingStep);
    RestReal(*this, StepStartField, 0.0);
    for (const int id : {StartingAtLabel, OrLabel, StartAtMinimumBox}) {
        EnableWindow(Window, id, false);
    }
    CheckDlgButton(Window, StartAtMinimumBox, false);
    EnableWindow(Window, BoundariesButton, false);
}

void CDefineTask::EnableCategorizationMethods(bool enable) {
    EnableWindow(Window, CategorizationGroup, enable);
    for (int method = 0; method < MethodCount; ++method) {
        EnableWindow(Window, RadioOf(method), enable);
    }
}

void CDefineTask::ShowCategorization() {
    for (int method = 0; method < MethodCount; ++method) {
        CheckDlgButton(Window, RadioOf(method), false);
    }
    ResetCategorizationControls();
    const Drill* record = CurrentRecord(*this);
    CatMethod = -1;
    if (record != nullptr) {
        TakeParameters(*this, *record);
        CatMethod = static_cast<std::int16_t>(record->Method);
    }
    if (record != nullptr && record->VarType == CategoricalVariable) {
        // A categorical variable has no choice: its method is the one that it has.
        EnableCategorizationMethods(false);
        EnableWindow(Window, CategorizationGroup, true);
        if (CatMethod == DistinctValues || CatMethod == NeatIntervals) {
            EnableWindow(Window, RadioOf(CatMethod), true);
            ShowMethod(*this);
        }
    } else if (IsMethod(CatMethod)) {
        ShowMethod(*this);
    } else {
        EnableWindow(Window, CategorizationGroup, false);
        ResetCategorizationControls();
    }
}

int CDefineTask::ApplyCategorization() {
    Drill* record = CDrillDown::FindRecord(Analysis->DrillDowns, Analysis->CurrentDown);
    if (record == nullptr) {
        return 1;
    }
    // Intended: the parameters are those of the record, unlike the method, which stays the page's; a field that can't
    // be read then leaves the record's own value.
    TakeParameters(*this, *record);
    if (record->VarType == CategoricalVariable || !IsMethod(CatMethod)) {
        return 1;
    }
    ReadValues(*this);
    // Intended: new boundaries of a record that has the user's already are no change, unlike a new number or step; they
    // wait for the next full pass, and until then the recount goes by the old ones.
    if (!SaysTheSame(*this, *record)) {
        Analysis->DataChanged = 1;  // first: categories that memory ends in the middle are made again
        Store(*this, *record);
    }
    return 1;
}

std::int64_t ChooseMethod(CDefineTask& task, std::int16_t method) {
    // Intended: the inputs show their resting values and not the record's, unlike in ShowCategorization; also a click
    // on the method that is chosen already drops what was typed.
    task.ResetCategorizationControls();
    task.CatMethod = method;
    OpenInputs(task);
    return 0;
}

std::int64_t ToggleStartAtMinimum(CDefineTask& task) {
    task.CatStartAtMin = task.CatStartAtMin == 0 ? 1 : 0;
    EnableStepStart(task);
    return 0;
}

std::int64_t EditBoundaries(CDefineTask& task) {
    task.LockResults();
    if (static_cast<std::int16_t>(GetListSelection(task.GetDlgItem(task.Window, DrillDownListControl))) >= 0) {
        CBoundariesDlg dialog(*task.Analysis);
        if (dialog.DoModal(task.Analysis->GetLibInstance()) == 1) {
            task.ApplyCategorization();
        } else {
            task.UpdateControls();
        }
    }
    task.UnlockResults();
    return 1;
}
