#include "tests/engine/ReferencePasses.h"

#include <algorithm>
#include <cmath>

#include "platform/OrderedBits.h"

namespace drilltest {

namespace {

bool IsWhole(double value) {
    return NearlyEqual(value, std::floor(value));
}

bool TakesDistinctValues(const Drill& record) {
    return record.Method == 0 || record.Method == 4;
}

bool Admits(const Drill& record, double value) {
    return record.Method == 0 || (record.Method == 4 && IsWhole(value));
}

void AddDistinctValue(Drill& record, double value, std::int16_t kind, double weight) {
    if (record.CategorySet.size() >= 2048) {
        record.CategorySet.clear();
        record.Method = 2;
        return;
    }
    for (const Categories& category : record.CategorySet) {
        if (NearlyEqual(category.Upper, value)) {
            Editable(category).Count += weight;
            return;
        }
    }
    record.CategorySet.insert({kind, weight, value, "", value});
}

void AddToInterval(Drill& record, double value, double weight) {
    for (const Categories& category : record.CategorySet) {
        if (record.Method == 3 ? category.Upper > value : category.Upper >= value) {
            Editable(category).Count += weight;
            return;
        }
    }
}

std::vector<std::int16_t> AllOf(const quillara::VariableLists& lists) {
    std::vector<std::int16_t> all = lists.First;
    all.insert(all.end(), lists.Second.begin(), lists.Second.end());
    return all;
}

void EmptyCategories(ReferencePasses::Records& set) {
    for (Drill& record : set) {
        record.CategorySet.clear();
    }
}

void Renumber(ReferencePasses::Records& set) {
    for (std::size_t i = 0; i < set.size(); ++i) {
        set[i].Order = static_cast<std::int16_t>(i);
    }
}

}  // namespace

void ReferencePasses::Statistics::AddMissing(double weight) {
    MissingWeight += weight;
    ++MissingCount;
}

void ReferencePasses::Statistics::Add(double x, double weight) {
    SumWeights += weight;
    ++ValidCount;
    if (x < Min) {
        Min = x;
    }
    if (x > Max) {
        Max = x;
    }
    const double d = (x - Mean) * weight;
    Mean = Mean + d / SumWeights;
    SumSquares = SumSquares + (x - Mean) * d;
}

void ReferencePasses::Statistics::Store(Drill& record) const {
    record.Min = Min;
    record.Max = Max;
    record.Mean = Mean;
    record.SumSquares = SumSquares;
    record.MissingCount = MissingCount;
    record.MissingWeight = MissingWeight;
    record.ValidCount = ValidCount;
    record.ValidWeight = SumWeights;
}

/// Visits the cases of the selection that have a positive weight; false when the user cancels on the way.
template <typename Visit>
bool ReferencePasses::ForEachCase(Visit visit) {
    for (std::size_t row = 0; row < static_cast<std::size_t>(Table.Cases); ++row) {
        if (!Selection.empty() && Selection[row] == CaseResult::Skip) {
            continue;
        }
        if (++Polls == CancelPoll) {
            return false;
        }
        const double weight = WeightOf(row);
        if (OrderedBits(weight) > 15) {
            visit(row, weight);
        }
    }
    return true;
}

double ReferencePasses::WeightOf(std::size_t row) const {
    if (!Weight) {
        return 1.0;
    }
    const quillara::Variable& variable = Table.Variables[*Weight];
    const double weight = variable.Values[row];
    if (NearlyEqual(weight, variable.MissingCode)) {
        return -1.0;
    }
    if (WeightedMoments == 1 || weight == 0.0) {
        return weight;
    }
    return weight > 0.0 ? std::floor(weight + 0.5) : std::ceil(weight - 0.5);
}

double ReferencePasses::Value(std::int16_t var, std::size_t row) const {
    return Table.Variables[static_cast<std::size_t>(var) - 1].Values[row];
}

bool ReferencePasses::IsMissing(std::int16_t var, double value) const {
    return NearlyEqual(value, Table.Variables[static_cast<std::size_t>(var) - 1].MissingCode);
}

bool ReferencePasses::AnyMissing(const quillara::VariableLists& lists, std::size_t row) const {
    const std::vector<std::int16_t> all = AllOf(lists);
    return std::any_of(all.begin(), all.end(), [&](std::int16_t var) { return IsMissing(var, Value(var, row)); });
}

bool ReferencePasses::DeletedForDrills(std::size_t row) const {
    return CasewiseDeletionOfMD == 1 && AnyMissing(Drills, row);
}

bool ReferencePasses::DeletedForReviews(std::size_t row) const {
    return RVCasewiseDeletionOfMD == 1 && AnyMissing(Reviewed, row);
}

bool ReferencePasses::HasBeenDrilled(std::size_t row) const {
    for (const Drill& step : DrillUps) {
        const double x = Value(step.VarNo, row);
        if (step.ChosenCategory == static_cast<std::int32_t>(step.CategorySet.size())) {
            if (!IsMissing(step.VarNo, x)) {
                return true;
            }
            continue;
        }
        if (step.Method > 5) {
            return false;
        }
        const Categories& kept = *std::next(step.CategorySet.begin(), step.ChosenCategory);
        const bool dropped = TakesDistinctValues(step) ? !(x == kept.Upper)
                             : step.Method == 3        ? x >= kept.Upper || kept.Lower > x
                                                       : x > kept.Upper || kept.Lower >= x;
        if (dropped) {
            return true;
        }
    }
    return false;
}

Drill* ReferencePasses::First(Records& set, std::int16_t var) const {
    const auto found = std::find_if(set.begin(), set.end(), [var](const Drill& record) { return record.VarNo == var; });
    return found == set.end() ? nullptr : &*found;
}

void ReferencePasses::MakeRecords(Records& set, const quillara::VariableLists& lists) const {
    set.clear();
    for (const std::int16_t var : AllOf(lists)) {
        const auto order = static_cast<std::int16_t>(set.size());
        const std::int16_t type = set.size() < lists.First.size() ? 0 : 1;
        set.emplace_back(var, type, order, Table.Variables[static_cast<std::size_t>(var) - 1].Name);
    }
}

void ReferencePasses::ChooseDrills(const quillara::VariableLists& lists) {
    Drills = lists;
    Reviewed = {};
    Reviews.clear();
    DrillUps.clear();
    MakeRecords(DrillDowns, Drills);
    ValidVar = 0;
    Scan(DrillDowns, Drills, false);
}

void ReferencePasses::ChooseReviews(const quillara::VariableLists& lists) {
    Reviewed = lists;
    MakeRecords(Reviews, Reviewed);
    Scan(Reviews, Reviewed, true);
    DataChanged = 0;
}

/// The scan of newly chosen variables. What sets the two lists apart: reviews are filtered and leave ValidVar alone;
/// drill records take neat intervals under any method but 0, reviews under Method 2; a cancel empties the drill
/// records.
int ReferencePasses::Scan(Records& set, const quillara::VariableLists& lists, bool reviews) {
    const std::vector<std::int16_t> variables = AllOf(lists);
    std::vector<Statistics> found(variables.size());
    const bool completed = ForEachCase([&](std::size_t row, double weight) {
        if (reviews && HasBeenDrilled(row)) {
            return;
        }
        if (reviews ? DeletedForReviews(row) : DeletedForDrills(row)) {
            std::for_each(found.begin(), found.end(), [&](Statistics& each) { each.AddMissing(weight); });
            return;
        }
        ValidVar += reviews ? 0 : 1;
        for (std::size_t i = 0; i < variables.size(); ++i) {
            const double x = Value(variables[i], row);
            if (IsMissing(variables[i], x)) {
                found[i].AddMissing(weight);
                continue;
            }
            found[i].Add(x, weight);
            if (i < lists.First.size()) {
                AddDistinctValue(*First(set, variables[i]), x, 0, weight);
            }
        }
    });
    if (!completed) {
        return reviews ? 0 : (set.clear(), 0);
    }
    for (std::size_t i = 0; i < variables.size(); ++i) {
        found[i].Store(*First(set, variables[i]));
        for (Drill& record : set) {
            if (i < lists.First.size() && record.VarNo == variables[i]) {
                record.Isset = TakesDistinctValues(record) ? 1 : 0;
            }
        }
    }
    for (Drill& record : set) {
        if (reviews ? record.Method == 2 : record.Method != 0) {
            record.MakeNeatCategories();
        }
    }
    return 1;
}

void ReferencePasses::AddValues(Records& set, std::vector<Statistics>& found, std::size_t row, double weight) {
    for (std::size_t i = 0; i < set.size(); ++i) {
        const double x = Value(set[i].VarNo, row);
        if (IsMissing(set[i].VarNo, x)) {
            found[i].AddMissing(weight);
            continue;
        }
        found[i].Add(x, weight);
        if (Admits(set[i], x)) {
            AddDistinctValue(*First(set, set[i].VarNo), x, set[i].VarType, weight);
        }
    }
}

void ReferencePasses::StoreAfterDrill(Records& set, const std::vector<Statistics>& found, int (Drill::*build)()) {
    for (std::size_t i = 0; i < set.size(); ++i) {
        found[i].Store(set[i]);
        set[i].Isset = TakesDistinctValues(set[i]) ? 1 : 0;
        if (!TakesDistinctValues(set[i])) {
            (set[i].*build)();
        }
    }
}

int ReferencePasses::ReadAfterDrill() {
    ValidVar = 0;
    EmptyCategories(DrillDowns);
    EmptyCategories(Reviews);
    std::vector<Statistics> drills(DrillDowns.size());
    std::vector<Statistics> reviews(Reviews.size());
    const bool completed = ForEachCase([&](std::size_t row, double weight) {
        if (HasBeenDrilled(row)) {
            return;
        }
        ++ValidVar;
        if (DeletedForDrills(row)) {
            std::for_each(drills.begin(), drills.end(), [&](Statistics& each) { each.AddMissing(weight); });
        } else {
            AddValues(DrillDowns, drills, row, weight);
        }
        if (!DeletedForReviews(row)) {
            AddValues(Reviews, reviews, row, weight);
        }
    });
    if (!completed) {
        EmptyCategories(DrillDowns);
        EmptyCategories(Reviews);
        return 0;
    }
    StoreAfterDrill(DrillDowns, drills, &Drill::RebuildCategories);
    StoreAfterDrill(Reviews, reviews, &Drill::MakeNeatCategories);
    return 1;
}

int ReferencePasses::ReadBeforeDrill() {
    if (DataChanged != 0 && !(AllOf(Drills).empty() && AllOf(Reviewed).empty())) {
        ReadAfterDrill();
    }
    DataChanged = 0;
    for (Records* set : {&DrillDowns, &Reviews}) {
        for (Drill& record : *set) {
            record.Isset = 0;
            for (const Categories& category : record.CategorySet) {
                Editable(category).Count = 0.0;
            }
        }
    }
    const bool completed = ForEachCase([&](std::size_t row, double weight) {
        if (HasBeenDrilled(row)) {
            return;
        }
        for (Drill& record : DrillDowns) {
            const double x = Value(record.VarNo, row);
            if (DeletedForDrills(row) || IsMissing(record.VarNo, x)) {
                continue;
            }
            if (!TakesDistinctValues(record)) {
                AddToInterval(record, x, weight);
            } else if (Admits(record, x)) {
                AddDistinctValue(*First(DrillDowns, record.VarNo), x, record.VarType, weight);
            }
        }
        for (Drill& record : Reviews) {
            const double x = Value(record.VarNo, row);
            if (!DeletedForReviews(row) && !IsMissing(record.VarNo, x)) {
                AddToInterval(record, x, weight);
            }
        }
    });
    if (!completed) {
        return 0;
    }
    for (Records* set : {&DrillDowns, &Reviews}) {
        for (Drill& record : *set) {
            record.Isset = 1;
        }
    }
    return 1;
}

/// Counts values into the intervals of the first record of each variable, which may be drilled on already.
template <typename Deletes>
int ReferencePasses::FillIntervals(const std::vector<std::int16_t>& variables, Deletes deletes) {
    const bool completed = ForEachCase([&](std::size_t row, double weight) {
        for (const std::int16_t var : variables) {
            Drill* record = First(DrillDowns, var);
            if (record != nullptr && !deletes(row) && !IsMissing(var, Value(var, row))) {
                AddToInterval(*record, Value(var, row), weight);
            }
        }
    });
    return completed ? 1 : 0;
}

int ReferencePasses::FillNeatIntervals() {
    const int result = FillIntervals(Drills.Second, [&](std::size_t row) { return DeletedForDrills(row); });
    for (Drill& record : DrillDowns) {
        if (result == 1 && std::count(Drills.Second.begin(), Drills.Second.end(), record.VarNo) > 0) {
            record.Isset = 1;
        }
    }
    return result;
}

int ReferencePasses::FillContinuousIntervals() {
    std::vector<std::int16_t> continuous;
    for (const Drill& record : DrillDowns) {
        if (record.VarType == 1) {
            continuous.push_back(record.VarNo);
        }
    }
    const int result =
        FillIntervals(continuous, [&](std::size_t row) { return AnyMissing(Drills, row) || HasBeenDrilled(row); });
    for (Drill& record : DrillDowns) {
        if (result == 1 && record.VarType == 1) {
            record.Isset = 1;
        }
    }
    return result;
}

void ReferencePasses::MoveDown(std::int16_t var, int row) {
    Drill* record = First(DrillDowns, var);
    int listed = -1;
    record->ChosenCategory = 0;
    for (const Categories& category : record->CategorySet) {
        listed += IsNonZero(category.Count) ? 1 : 0;
        if (listed == row) {
            break;
        }
        ++record->ChosenCategory;
    }
    DrillUps.insert(DrillUps.begin(), *record);
    DrillDowns.erase(DrillDowns.begin() + (record - DrillDowns.data()));
    Renumber(DrillUps);
    Renumber(DrillDowns);
}

void ReferencePasses::MoveUp(std::int16_t var) {
    Drill* step = First(DrillUps, var);
    step->ChosenCategory = -1;
    DrillDowns.insert(DrillDowns.begin(), *step);
    DrillUps.erase(DrillUps.begin() + (step - DrillUps.data()));
    Renumber(DrillUps);
    Renumber(DrillDowns);
}

}  // namespace drilltest
