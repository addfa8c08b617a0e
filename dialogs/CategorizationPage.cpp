#include "dialogs/CategorizationPage.h"

#include <array>

#include "dialogs/BoundariesDlg.h"
#include "dialogs/DefineTask.h"
#include "host/WindowServices.h"
#include "resources/ControlIds.h"

namespace {

constexpr int FewestIntervals = 2;
constexpr int MostIntervals = 999;
constexpr int RestingCount = 10;
constexpr double LargestStep = 1.7e308;
constexpr double RestingStep = 1.0;
constexpr int RestingFormat = 2;  // number formats of the host
constexpr int RecordFormat = 3;
constexpr int MethodCount = 6;

/// What sets a method apart on the page and in the record. A method without a count or steps stores zeros there.
struct MethodRow {
    int CountField;  ///< field of the number of intervals; 0: none
    std::int32_t Drill::*Count;  ///< where the record holds that number
    bool HasSteps;  ///< step size and start are given
    int (Drill::*Build)();  ///< cuts the categories anew
};

// clang-format off
constexpr std::array<MethodRow, MethodCount> Methods{{
    // CountField    Count               HasSteps  Build
    {0,               nullptr,            false,    &Drill::ClearCategories},
    {ExactCountField, &Drill::ExactCount, false,    &Drill::MakeExactCategories},
    {NeatCountField,  &Drill::NeatCount,  false,    &Drill::MakeNeatCategories},
    {0,               nullptr,            true,     &Drill::MakeStepCategories},
    {0,               nullptr,            false,    &Drill::ClearCategories},
    {0,               nullptr,            false,    &Drill::MakeUserCategories},
}};
// clang-format on

static_assert(DistinctValuesRadio + MethodCount - 1 == UserIntervalsRadio);

constexpr bool IsMethod(int method) {
    return method >= 0 && method < MethodCount;
}

constexpr int RadioOf(int method) {
    return DistinctValuesRadio + method;
}

/// Steps start at a given value only when they don't start at the minimum.
void EnableStepStart(CDefineTask& task) {
    for (const int id : {StartingAtLabel, StepStartField}) {
        task.EnableWindow(task.Window, id, task.CatStartAtMin == 0);
    }
}

/// Lets the user edit what belongs to the method; the inputs are at rest before.
void OpenInputs(CDefineTask& task) {
    const MethodRow& method = Methods[static_cast<std::size_t>(task.CatMethod)];
    if (method.CountField != 0) {
        task.EnableWindow(task.Window, method.CountField, true);
    }
    if (method.HasSteps) {
        task.EnableWindow(task.Window, StepSizeField, true);
        EnableStepStart(task);
        task.EnableWindow(task.Window, OrLabel, true);
        task.EnableWindow(task.Window, StartAtMinimumBox, true);
        task.CheckDlgButton(task.Window, StartAtMinimumBox, task.CatStartAtMin == 1);
    }
    if (task.CatMethod == UserIntervals) {
        task.EnableWindow(task.Window, BoundariesButton, true);
    }
}

void WriteValues(CDefineTask& task) {
    const MethodRow& method = Methods[static_cast<std::size_t>(task.CatMethod)];
    if (method.CountField != 0) {
        task.SetDlgItemInt(task.Window, method.CountField, task.CatCount, 0);
    }
    if (method.HasSteps) {
        task.SetDlgItemDouble(task.Window, StepSizeField, task.CatStepSize, 0, RecordFormat);
        task.SetDlgItemDouble(task.Window, StepStartField, task.CatStepStart, 0, RecordFormat);
    }
}

/// Fields that can't be read leave the scratch values as they were.
void ReadValues(CDefineTask& task) {
    const MethodRow& method = Methods[static_cast<std::size_t>(task.CatMethod)];
    if (method.CountField != 0) {
        task.GetDlgItemInteger(task.Window, method.CountField, &task.CatCount);
    }
    if (method.HasSteps) {
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
    task.CatCount = static_cast<std::int16_t>(record.Method == ExactIntervals ? record.ExactCount : record.NeatCount);
    task.CatStartAtMin = static_cast<std::uint16_t>(record.StartAtMin);
    task.CatStepSize = record.StepSize;
    task.CatStepStart = record.StepStart;
}

bool SaysTheSame(const CDefineTask& task, const Drill& record) {
    const MethodRow& method = Methods[static_cast<std::size_t>(task.CatMethod)];
    const bool sameCount = method.Count == nullptr || record.*method.Count == task.CatCount;
    const bool sameSteps =
        !method.HasSteps || (record.StartAtMin == task.CatStartAtMin && record.StepSize == task.CatStepSize &&
                             record.StepStart == task.CatStepStart);
    return record.Method == task.CatMethod && sameCount && sameSteps;
}

void Store(const CDefineTask& task, Drill& record) {
    const MethodRow& method = Methods[static_cast<std::size_t>(task.CatMethod)];
    record.Method = task.CatMethod;
    record.ExactCount = record.NeatCount = method.Count != nullptr ? task.CatCount : 0;
    record.StepSize = method.HasSteps ? task.CatStepSize : 0.0;
    record.StepStart = method.HasSteps ? task.CatStepStart : 0.0;
    record.StartAtMin = method.HasSteps ? task.CatStartAtMin : 0;
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
    if (!SaysTheSame(*this, *record)) {
        Store(*this, *record);
        Analysis->DataChanged = 1;
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
