#include "tests/engine/ReferencePasses.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "platform/OrderedBits.h"

namespace drilltest {

namespace {

using Plain = ReferencePasses;
using Records = Plain::Records;

double Value(const Plain& plain, std::int16_t var, std::size_t row) {
    return plain.Table.Variables[static_cast<std::size_t>(var) - 1].Values[row];
}

bool IsMissing(const Plain& plain, std::int16_t var, std::size_t row) {
    return NearlyEqual(Value(plain, var, row), plain.Table.Variables[static_cast<std::size_t>(var) - 1].MissingCode);
}

bool AnyMissing(const Plain& plain, const VariableLists& lists, std::size_t row) {
    const auto missing = [&](std::int16_t var) { return IsMissing(plain, var, row); };
    return std::any_of(lists.First.begin(), lists.First.end(), missing) ||
           std::any_of(lists.Second.begin(), lists.Second.end(), missing);
}

bool Deleted(const Plain& plain, const Plain::Side& side, std::size_t row) {
    return side.Casewise == 1 && AnyMissing(plain, side.Lists, row);
}

double WeightOf(const Plain& plain, std::size_t row) {
    if (!plain.Weight) {
        return 1.0;
    }
    const auto var = static_cast<std::int16_t>(*plain.Weight + 1);
    const double weight = Value(plain, var, row);
    const double whole = weight > 0.0 ? std::floor(weight + 0.5) : std::ceil(weight - 0.5);
    return IsMissing(plain, var, row) ? -1.0 : plain.WeightedMoments == 1 || weight == 0.0 ? weight : whole;
}

bool TakesDistinctValues(const Drill& record) {
    return record.Method == 0 || record.Method == 4;
}

bool Keeps(const Plain& plain, const Drill& step, std::size_t row) {
    const double x = Value(plain, step.VarNo, row);
    if (step.ChosenCategory == static_cast<std::int32_t>(step.CategorySet.size())) {
        return IsMissing(plain, step.VarNo, row);
    }
    const Categories& kept = *std::next(step.CategorySet.begin(), step.ChosenCategory);
    return TakesDistinctValues(step) ? x == kept.Upper
           : step.Method == 3        ? !(x >= kept.Upper || kept.Lower > x)
                                     : !(x > kept.Upper || kept.Lower >= x);
}

/// Visits the cases of the selection that have a positive weight and, if asked for, pass every step; false when the
/// user cancels on the way.
template <typename Visit>
bool ForEachCase(Plain& plain, bool filtered, Visit visit) {
    for (std::size_t row = 0; row < static_cast<std::size_t>(plain.Table.Cases); ++row) {
        if (!plain.Selection.empty() && plain.Selection[row] == CaseResult::Skip) {
            continue;
        }
        if (++plain.Polls == plain.CancelPoll) {
            return false;
        }
        const double weight = WeightOf(plain, row);
        const auto keeps = [&](const Drill& step) { return Keeps(plain, step, row); };
        if (OrderedBits(weight) > 15 && (!filtered || std::all_of(plain.Steps.begin(), plain.Steps.end(), keeps))) {
            visit(row, weight);
        }
    }
    return true;
}

auto Statistics(Drill& record) {
    return std::tie(record.Min, record.Max, record.Mean, record.SumSquares, record.ValidCount, record.ValidWeight,
                    record.MissingCount, record.MissingWeight);
}

/// The records with the statistics of no case; a pass adds to them and stores them at its end.
Records WithoutStatistics(Records records) {
    for (Drill& found : records) {
        Statistics(found) = std::tuple(1.7e+308, -1.7e+308, 0.0, 0.0, 0, 0.0, 0, 0.0);
    }
    return records;
}

void AddMissing(Drill& found, double weight) {
    ++found.MissingCount;
    found.MissingWeight += weight;
}

void AddMissing(Records& found, double weight) {
    std::for_each(found.begin(), found.end(), [weight](Drill& each) { AddMissing(each, weight); });
}

void AddValid(Drill& found, double x, double weight) {
    ++found.ValidCount;
    found.ValidWeight += weight;
    found.Min = x < found.Min ? x : found.Min;
    found.Max = x > found.Max ? x : found.Max;
    const double d = (x - found.Mean) * weight;
    found.Mean = found.Mean + d / found.ValidWeight;
    found.SumSquares = found.SumSquares + (x - found.Mean) * d;
}

bool AdmitsAny(const Drill& record, double) {
    return record.VarType == 0;
}

bool AdmitsByMethod(const Drill& record, double value) {
    return record.Method == 0 || (record.Method == 4 && NearlyEqual(value, std::floor(value)));
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

/// The first record of a variable.
Drill* First(Records& records, std::int16_t var) {
    const auto found = std::find_if(records.begin(), records.end(), [var](auto& each) { return each.VarNo == var; });
    return found == records.end() ? nullptr : &*found;
}

/// Adds a case to the statistics found so far, and its admitted values to the categories of the first record of their
/// variable.
void AddCase(const Plain& plain, Records& open, Records& found, std::size_t row, double weight,
             bool (*admits)(const Drill&, double)) {
    for (std::size_t i = 0; i < open.size(); ++i) {
        const Drill& record = open[i];
        const double x = Value(plain, record.VarNo, row);
        if (IsMissing(plain, record.VarNo, row)) {
            AddMissing(found[i], weight);
            continue;
        }
        AddValid(found[i], x, weight);
        if (admits(record, x)) {
            AddDistinctValue(*First(open, record.VarNo), x, record.VarType, weight);
        }
    }
}

template <typename Change>
void ForEachRecord(Plain& plain, Change change) {
    std::for_each(plain.Drills.Open.begin(), plain.Drills.Open.end(), change);
    std::for_each(plain.Reviews.Open.begin(), plain.Reviews.Open.end(), change);
}

void EmptyCategories(Drill& record) {
    record.CategorySet.clear();
}

/// The scan of newly chosen variables. What sets the two lists apart: reviews are filtered and leave ValidVar alone;
/// drill records take neat intervals under any method but 0, reviews under Method 2.
bool Scan(Plain& plain, Plain::Side& side, const VariableLists& lists) {
    const bool reviews = &side == &plain.Reviews;
    side.Lists = lists;
    side.Open.clear();
    for (const auto& [list, type] : {std::pair(&lists.First, 0), std::pair(&lists.Second, 1)}) {
        for (const std::int16_t var : *list) {
            const auto order = static_cast<std::int16_t>(side.Open.size());
            const std::string& name = plain.Table.Variables[static_cast<std::size_t>(var) - 1].Name;
            side.Open.emplace_back(var, static_cast<std::int16_t>(type), order, name);
        }
    }
    Records found = WithoutStatistics(side.Open);
    const bool completed = ForEachCase(plain, reviews, [&](std::size_t row, double weight) {
        if (Deleted(plain, side, row)) {
            return AddMissing(found, weight);
        }
        plain.ValidVar += reviews ? 0 : 1;
        AddCase(plain, side.Open, found, row, weight, AdmitsAny);
    });
    if (!completed) {
        return false;
    }
    for (Drill& each : found) {
        Statistics(*First(side.Open, each.VarNo)) = Statistics(each);
    }
    for (Drill& record : side.Open) {
        record.Isset = TakesDistinctValues(record) ? 1 : 0;
        if (reviews ? record.Method == 2 : record.Method != 0) {
            record.MakeNeatCategories();
        }
    }
    return true;
}

void StoreAfterDrill(Records& open, Records& found, int (Drill::*build)()) {
    for (std::size_t i = 0; i < open.size(); ++i) {
        Statistics(open[i]) = Statistics(found[i]);
        open[i].Isset = TakesDistinctValues(open[i]) ? 1 : 0;
        if (!TakesDistinctValues(open[i])) {
            (open[i].*build)();
        }
    }
}

}  // namespace

void ReferencePasses::Adopt(const CDrillDown& module) {
    ValidVar = module.ValidVar;
    DataChanged = module.DataChanged;
    WeightedMoments = module.WeightedMoments;
    Drills.Casewise = module.CasewiseDeletionOfMD;
    Reviews.Casewise = module.RVCasewiseDeletionOfMD;
    Drills.Open.assign(module.DrillDowns->begin(), module.DrillDowns->end());
    Reviews.Open.assign(module.Reviews->begin(), module.Reviews->end());
    Steps.assign(module.DrillUps->begin(), module.DrillUps->end());
}

int ReferencePasses::Choose(const VariableLists& lists) {
    Reviews.Lists = {};
    Reviews.Open.clear();
    ValidVar = 0;
    if (!Scan(*this, Drills, lists)) {
        Drills.Open.clear();
    }
    return 1;
}

int ReferencePasses::Review(const VariableLists& lists) {
    Scan(*this, Reviews, lists);
    DataChanged = 0;
    return 1;
}

int ReferencePasses::ReadAfterDrill() {
    ValidVar = 0;
    ForEachRecord(*this, EmptyCategories);
    Records drills = WithoutStatistics(Drills.Open);
    Records reviews = WithoutStatistics(Reviews.Open);
    const bool completed = ForEachCase(*this, true, [&](std::size_t row, double weight) {
        ++ValidVar;
        if (Deleted(*this, Drills, row)) {
            AddMissing(drills, weight);
        } else {
            AddCase(*this, Drills.Open, drills, row, weight, AdmitsByMethod);
        }
        if (!Deleted(*this, Reviews, row)) {
            AddCase(*this, Reviews.Open, reviews, row, weight, AdmitsByMethod);
        }
    });
    if (!completed) {
        ForEachRecord(*this, EmptyCategories);
        return 0;
    }
    StoreAfterDrill(Drills.Open, drills, &Drill::RebuildCategories);
    StoreAfterDrill(Reviews.Open, reviews, &Drill::MakeNeatCategories);
    return 1;
}

int ReferencePasses::ReadBeforeDrill() {
    if (DataChanged != 0 && !(Drills.Lists.First.empty() && Drills.Lists.Second.empty() &&
                              Reviews.Lists.First.empty() && Reviews.Lists.Second.empty())) {
        ReadAfterDrill();
    }
    DataChanged = 0;
    ForEachRecord(*this, [](Drill& record) {
        record.Isset = 0;
        for (const Categories& category : record.CategorySet) {
            Editable(category).Count = 0.0;
        }
    });
    const bool completed = ForEachCase(*this, true, [&](std::size_t row, double weight) {
        for (Side* side : {&Drills, &Reviews}) {
            for (Drill& record : side->Open) {
                const double x = Value(*this, record.VarNo, row);
                if (Deleted(*this, *side, row) || IsMissing(*this, record.VarNo, row)) {
                    continue;
                }
                if (side == &Reviews || !TakesDistinctValues(record)) {
                    AddToInterval(record, x, weight);
                } else if (AdmitsByMethod(record, x)) {
                    AddDistinctValue(*First(Drills.Open, record.VarNo), x, record.VarType, weight);
                }
            }
        }
    });
    if (completed) {
        ForEachRecord(*this, [](Drill& record) { record.Isset = 1; });
    }
    return completed ? 1 : 0;
}

int ReferencePasses::FillIntervals(bool remaining) {
    std::vector<std::int16_t> variables = remaining ? std::vector<std::int16_t>() : Drills.Lists.Second;
    for (const Drill& record : Drills.Open) {
        if (remaining && record.VarType == 1) {
            variables.push_back(record.VarNo);
        }
    }
    const bool completed = ForEachCase(*this, remaining, [&](std::size_t row, double weight) {
        const bool deleted = remaining ? AnyMissing(*this, Drills.Lists, row) : Deleted(*this, Drills, row);
        for (const std::int16_t var : variables) {
            Drill* record = First(Drills.Open, var);
            if (record != nullptr && !deleted && !IsMissing(*this, var, row)) {
                AddToInterval(*record, Value(*this, var, row), weight);
            }
        }
    });
    for (Drill& record : Drills.Open) {
        const auto times = std::count(variables.begin(), variables.end(), record.VarNo);
        if (completed && (remaining ? record.VarType == 1 : times > 0)) {
            record.Isset = 1;
        }
    }
    return completed ? 1 : 0;
}

}  // namespace drilltest
