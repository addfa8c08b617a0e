#include <algorithm>

#include "engine/DrillDown.h"

using namespace drilldown;

namespace {

using DrillSet = CDrillDown::DrillSet;

/// Carries out `change` on the first record of a variable. Always 1.
template <typename Change>
int Write(const DrillSet* set, int var, Change change) {
    if (Drill* record = CDrillDown::FindRecord(set, var)) {
        change(*record);
    }
    return 1;
}

/// Carries out `change` on every record that has the number. Always 1.
template <typename Change>
int WriteEvery(const DrillSet* set, int var, Change change) {
    for (const Drill& record : *set) {
        if (record.VarNo == var) {
            change(Editable(record));
        }
    }
    return 1;
}

/// A member of a variable's record, or `absent`.
template <typename Value>
Value Read(const DrillSet* set, int var, Value Drill::*member, Value absent) {
    const Drill* record = CDrillDown::FindRecord(set, var);
    return record == nullptr ? absent : record->*member;
}

struct MetValue {
    double Value;
    std::int16_t Kind;
    double Weight;
};

int AddValue(const DrillSet* set, int var, const MetValue& met) {
    return Write(set, var, [&](Drill& record) { record.AddDistinctValue(met.Value, met.Kind, met.Weight, ""); });
}

struct Descriptives {
    double Min;
    double Max;
    double Mean;
    double SumSquares;
};

int StoreDescriptives(const DrillSet* set, int var, const Descriptives& values) {
    return Write(set, var, [&](Drill& record) {
        record.Min = values.Min;
        record.Max = values.Max;
        record.Mean = values.Mean;
        record.SumSquares = values.SumSquares;
        // Intended: reset here, unlike the other counts; the caller stores all of them next.
        record.ValidCount = 0;
    });
}

struct CaseCounts {
    std::int32_t Missing;
    double MissingWeight;
    std::int32_t Valid;
    double ValidWeight;
};

int StoreCounts(const DrillSet* set, int var, const CaseCounts& counts) {
    return Write(set, var, [&](Drill& record) {
        record.MissingCount = counts.Missing;
        record.MissingWeight = counts.MissingWeight;
        record.ValidCount = counts.Valid;
        record.ValidWeight = counts.ValidWeight;
    });
}

void MarkCountedByMethod(Drill& record) {
    record.Isset = record.TakesDistinctValues() ? 1 : 0;
}

/// Stands for the categories of a record that isn't there.
CDrillDown::CategorySetType& NoCategories() {
    static CDrillDown::CategorySetType none;
    none.clear();
    return none;
}

}  // namespace

int CDrillDown::SetDrillCategories(std::int16_t var, double value, std::int16_t kind, double weight) {
    return AddValue(DrillDowns, var, {value, kind, weight});
}

int CDrillDown::SetReviewCategories(std::int16_t var, double value, std::int16_t kind, double weight) {
    return AddValue(Reviews, var, {value, kind, weight});
}

int CDrillDown::SetDrillDescriptives(std::int16_t var, double min, double max, double mean, double sumSquares) {
    return StoreDescriptives(DrillDowns, var, {min, max, mean, sumSquares});
}

int CDrillDown::SetReviewDescriptives(std::int16_t var, double min, double max, double mean, double sumSquares) {
    return StoreDescriptives(Reviews, var, {min, max, mean, sumSquares});
}

int CDrillDown::SetMissingCount(std::int16_t var, std::int32_t missing, double missingWeight, std::int32_t valid,
                                double validWeight) {
    return StoreCounts(DrillDowns, var, {missing, missingWeight, valid, validWeight});
}

int CDrillDown::SetReviewMissingCount(std::int16_t var, std::int32_t missing, double missingWeight, std::int32_t valid,
                                      double validWeight) {
    return StoreCounts(Reviews, var, {missing, missingWeight, valid, validWeight});
}

int CDrillDown::SetCategoriesIsset(int var) {
    return WriteEvery(DrillDowns, var, MarkCountedByMethod);
}

int CDrillDown::SetReviewCategoriesIsset(int var) {
    return WriteEvery(Reviews, var, MarkCountedByMethod);
}

int CDrillDown::SetIsset(int var, int value) {
    return WriteEvery(DrillDowns, var, [value](Drill& record) { record.Isset = static_cast<std::int16_t>(value); });
}

int CDrillDown::SetAllIsset(int value) {
    for (const Drill& record : *DrillDowns) {
        Editable(record).Isset = static_cast<std::int16_t>(value);
    }
    return 1;
}

int CDrillDown::GetCurrentIsset() const {
    return Read(DrillDowns, CurrentDown, &Drill::Isset, std::int16_t{-1});
}

CDrillDown::CategorySetType* CDrillDown::GetCurrentCategories() {
    Drill* record = FindRecord(DrillDowns, CurrentDown);
    return record == nullptr ? &NoCategories() : &record->CategorySet;
}

const CDrillDown::CategorySetType* CDrillDown::GetCurrentCategories() const {
    return GetDrillCategories(CurrentDown);
}

const CDrillDown::CategorySetType* CDrillDown::GetDrillCategories(std::int16_t var) const {
    const Drill* record = FindRecord(DrillDowns, var);
    return record == nullptr ? &NoCategories() : &record->CategorySet;
}

CDrillDown::DrillSet::const_iterator CDrillDown::GetLastDrillUpCategories() const {
    return DrillUps->end();
}

const double* CDrillDown::GetUserInterv() const {
    const Drill* record = FindRecord(DrillDowns, CurrentDown);
    return record == nullptr ? nullptr : record->UserInterv.data();
}

int CDrillDown::SetUserIntervals(const double* values, int n) {
    return Write(DrillDowns, CurrentDown, [=](Drill& record) {
        record.NU = std::clamp(n, 0, static_cast<int>(UserBoundaryRoom));
        std::copy_n(values, record.NU, record.UserInterv.begin());
    });
}

int CDrillDown::GetCurrentNU() const {
    return Read(DrillDowns, CurrentDown, &Drill::NU, 0);
}

double CDrillDown::GetCurrentMCount() const {
    return Read(DrillDowns, CurrentDown, &Drill::MissingWeight, 0.0);
}

std::int16_t CDrillDown::GetCurrentDrillDown() const {
    // Intended: -1 when absent, unlike GetCurrentDrillUp; the moves and scripts depend on the two numbers.
    return Read(DrillDowns, CurrentDown, &Drill::VarNo, std::int16_t{-1});
}

std::int16_t CDrillDown::GetCurrentDrillUp() const {
    // Intended: 0 when absent, unlike GetCurrentDrillDown; the moves and scripts depend on the two numbers.
    return Read(DrillUps, CurrentUp, &Drill::VarNo, std::int16_t{0});
}

std::string CDrillDown::GetCurrentDrillUpName() const {
    return Read(DrillUps, CurrentUp, &Drill::Name, std::string());
}

std::string CDrillDown::GetCurrentVariableName() const {
    return Read(DrillDowns, CurrentDown, &Drill::Name, std::string());
}

std::int16_t CDrillDown::GetCurrentVariableType() const {
    return Read(DrillDowns, CurrentDown, &Drill::VarType, CategoricalVariable);
}

int CDrillDown::GetCurrentMethod() const {
    return Read(DrillDowns, CurrentDown, &Drill::Method, -1);
}

int CDrillDown::GetDrillMethod(int& type, int& count, int& atMin, double& step, double& start) const {
    const Drill* record = FindRecord(DrillDowns, CurrentDown);
    if (record == nullptr) {
        return -1;
    }
    type = record->VarType;
    count = record->IntervalCount();
    atMin = record->StartAtMin;
    step = record->StepSize;
    start = record->StepStart;
    return record->Method;
}

int CDrillDown::GetDrillMinMax(double& min, double& max) const {
    const Drill* record = FindRecord(DrillDowns, CurrentDown);
    if (record == nullptr) {
        return -1;
    }
    min = record->Min;
    max = record->Max;
    return 1;
}

int CDrillDown::GetDrillDownsContSize() const {
    return static_cast<int>(std::count_if(DrillDowns->begin(), DrillDowns->end(),
                                          [](const Drill& record) { return record.VarType == ContinuousVariable; }));
}

int CDrillDown::SetCurrentCategories(int, int, int, double, double) {
    // Intended: changes nothing, unlike the other setters; hosts may call it and rely on the result.
    return 1;
}

std::int32_t CDrillDown::SetSelectedItem(std::int32_t item) {
    // Intended: an index over all categories, unlike the row that MoveToDrillUps reads; callers that set the two apart
    // depend on it.
    const CategorySetType& categories = *GetCurrentCategories();
    std::int32_t index = 0;
    std::int32_t counted = 0;
    for (const Categories& category : categories) {
        if (IsNonZero(category.Count) && counted++ == item) {
            break;
        }
        ++index;
    }
    return Selected = index;
}

std::int16_t CDrillDown::SetCurrentUpItem(std::int16_t item) {
    const bool exists = item >= 0 && item < GetDrillUpsSize();
    return CurrentUp = exists ? std::next(DrillUps->begin(), item)->VarNo : std::int16_t{-1};
}

std::int16_t CDrillDown::GetCurrentUpItem() {
    const auto it = LookFor(CurrentUp, DrillUps);
    if (it == DrillUps->end()) {
        // Intended: this getter writes, unlike the others; the undo of brushing depends on no stale variable staying
        // current.
        return CurrentUp = -1;
    }
    return static_cast<std::int16_t>(std::distance(DrillUps->cbegin(), it));
}

int CDrillDown::NoMissingDrill() const {
    const bool exists = std::any_of(DrillUps->begin(), DrillUps->end(), [](const Drill& record) {
        return record.ChosenCategory == static_cast<std::int32_t>(record.CategorySet.size());
    });
    return exists ? 0 : 1;
}

CDrillDown::DrillSet::const_iterator CDrillDown::LookFor(std::int16_t var, const DrillSet* set) const {
    return std::find_if(set->begin(), set->end(), [var](const Drill& record) { return record.VarNo == var; });
}

Drill* CDrillDown::FindRecord(const DrillSet* set, int var) {
    const auto it = std::find_if(set->begin(), set->end(), [var](const Drill& record) { return record.VarNo == var; });
    return it == set->end() ? nullptr : &Editable(*it);
}
