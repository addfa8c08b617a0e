#include "tests/engine/ReferenceAnalysis.h"

#include <algorithm>
#include <cmath>

#include "platform/OrderedBits.h"

namespace drilltest {

namespace {

using Plain = ReferenceAnalysis;
using Records = Plain::Records;
using Side = Plain::Side;

double Value(const Plain& plain, std::int16_t var, std::size_t row) {
    return plain.Table.Variables[static_cast<std::size_t>(var) - 1].Values[row];
}

bool IsMissing(const Plain& plain, std::int16_t var, std::size_t row) {
    return NearlyEqual(Value(plain, var, row), plain.Table.Variables[static_cast<std::size_t>(var) - 1].MissingCode);
}

bool AnyMissing(const Plain& plain, const VariableLists& lists, std::size_t row) {
    const auto missing = [&](std::int16_t var) { return IsMissing(plain, var, row); };
    return std::ranges::any_of(lists.First, missing) || std::ranges::any_of(lists.Second, missing);
}

bool Deleted(const Plain& plain, const Side& side, std::size_t row) {
    return side.Casewise == 1 && AnyMissing(plain, side.Lists, row);
}

double WeightOf(const Plain& plain, std::size_t row) {
    if (!plain.Weight) {
        return 1.0;
    }
    const auto var = static_cast<std::int16_t>(*plain.Weight + 1);
    const double weight = Value(plain, var, row);
    return IsMissing(plain, var, row) ? -1.0 : plain.WeightedMoments == 1 ? weight : std::round(weight);
}

bool TakesDistinctValues(const Drill& record) {
    return record.Method == 0 || record.Method == 4;
}

bool Keeps(const Plain& plain, const Drill& step, std::size_t row) {
    const double x = Value(plain, step.VarNo, row);
    const auto missing = static_cast<std::int32_t>(step.CategorySet.size());
    if (step.ChosenCategory >= missing) {
        return step.ChosenCategory == missing && IsMissing(plain, step.VarNo, row);
    }
    const Categories& kept = *std::next(step.CategorySet.begin(), step.ChosenCategory);
    return TakesDistinctValues(step) ? x == kept.Upper
           : step.Method == 3        ? !(x >= kept.Upper || kept.Lower > x)
                                     : !(x > kept.Upper || kept.Lower >= x);
}

struct Reading {
    std::vector<std::pair<std::size_t, double>> Cases;  ///< rows and weights
    bool Completed = true;  ///< false: the user cancelled behind these cases
};

/// Reads the cases of the selection that have a positive weight and, if asked for, pass every step.
Reading Read(Plain& plain, bool filtered) {
    Reading read;
    for (std::size_t row = 0; row < static_cast<std::size_t>(plain.Table.Cases) && read.Completed; ++row) {
        if (!plain.Selection.empty() && plain.Selection[row] == CaseResult::Skip) {
            continue;
        }
        read.Completed = ++plain.Polls != plain.CancelPoll;
        const double weight = WeightOf(plain, row);
        const auto keeps = [&](const Drill& step) { return Keeps(plain, step, row); };
        const bool remains = !filtered || std::ranges::all_of(plain.Steps, keeps);
        if (read.Completed && OrderedBits(weight) > 15 && remains) {
            read.Cases.emplace_back(row, weight);
        }
    }
    return read;
}

/// The first record of a variable that has one.
Drill* First(Records& records, std::int16_t var) {
    return &*std::ranges::find(records, var, &Drill::VarNo);
}

void SetStatistics(const Plain& plain, const Side& side, const Reading& read, bool countsDeleted, Drill& record) {
    record.Min = 1.7e+308;
    record.Max = -1.7e+308;
    record.Mean = record.SumSquares = record.ValidWeight = record.MissingWeight = 0.0;
    record.ValidCount = record.MissingCount = 0;
    for (const auto& [row, weight] : read.Cases) {
        const double x = Value(plain, record.VarNo, row);
        const bool deleted = Deleted(plain, side, row);
        if (!deleted && !IsMissing(plain, record.VarNo, row)) {
            ++record.ValidCount;
            record.ValidWeight += weight;
            record.Min = std::min(record.Min, x);
            record.Max = std::max(record.Max, x);
            const double d = (x - record.Mean) * weight;
            record.Mean += d / record.ValidWeight;
            record.SumSquares += (x - record.Mean) * d;
        } else if (!deleted || countsDeleted) {
            ++record.MissingCount;
            record.MissingWeight += weight;
        }
    }
}

/// Counts a value that the method of its record admits, as a category of the first record of the variable.
void AddDistinctValue(Records& open, const Drill& feeder, double value, double weight) {
    if (feeder.Method != 0 && !(feeder.Method == 4 && NearlyEqual(value, std::floor(value)))) {
        return;
    }
    Drill& record = *First(open, feeder.VarNo);
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
    record.CategorySet.insert({feeder.VarType, weight, value, "", value});
}

void AddToInterval(Drill& record, double value, double weight) {
    for (const Categories& category : record.CategorySet) {
        if (record.Method == 3 ? category.Upper > value : category.Upper >= value) {
            Editable(category).Count += weight;
            return;
        }
    }
}

/// Adds the valid values of a side to its categories, case by case.
template <typename Add>
void Count(const Plain& plain, Side& side, const Reading& read, Add add) {
    for (const auto& [row, weight] : read.Cases) {
        for (Drill& record : side.Open) {
            if (!Deleted(plain, side, row) && !IsMissing(plain, record.VarNo, row)) {
                add(record, Value(plain, record.VarNo, row), weight);
            }
        }
    }
}

/// What sets the readings of records apart.
struct Rules {
    bool FirstRecordsOnly;  ///< a second record of a variable gets no statistics
    bool CountsDeleted;  ///< a case that is deleted casewise counts as missing, not nowhere
    int (Drill::*Build)();  ///< makes the intervals
};

/// Gives the records of a side the values and the statistics of the cases read; a cancelled reading gives values only.
void Describe(const Plain& plain, Side& side, const Reading& read, const Rules& rules) {
    Count(plain, side, read,
          [&](const Drill& record, double x, double weight) { AddDistinctValue(side.Open, record, x, weight); });
    for (Drill& record : side.Open) {
        if (!read.Completed) {
            continue;
        }
        if (!rules.FirstRecordsOnly || &record == First(side.Open, record.VarNo)) {
            SetStatistics(plain, side, read, rules.CountsDeleted, record);
        }
        record.Isset = TakesDistinctValues(record) ? 1 : 0;
        if (!TakesDistinctValues(record)) {
            (record.*rules.Build)();
        }
    }
}

/// The scan of newly chosen variables.
bool Scan(Plain& plain, Side& side, const VariableLists& lists) {
    side.Lists = lists;
    side.Open.clear();
    for (const auto& [list, type] : {std::pair(&lists.First, 0), std::pair(&lists.Second, 1)}) {
        for (const std::int16_t var : *list) {
            const auto order = static_cast<std::int16_t>(side.Open.size());
            const std::string& name = plain.Table.Variables[static_cast<std::size_t>(var) - 1].Name;
            side.Open.emplace_back(var, static_cast<std::int16_t>(type), order, name);
        }
    }
    const bool reviews = &side == &plain.Reviews;
    const Reading read = Read(plain, reviews);
    for (const auto& [row, weight] : read.Cases) {
        plain.ValidVar += reviews || Deleted(plain, side, row) ? 0 : 1;
    }
    Describe(plain, side, read, {true, true, &Drill::MakeNeatCategories});
    return read.Completed;
}

template <typename Change>
void ForEachRecord(Plain& plain, Change change) {
    std::ranges::for_each(plain.Drills.Open, change);
    std::ranges::for_each(plain.Reviews.Open, change);
}

void EmptyCategories(Drill& record) {
    record.CategorySet.clear();
}

void Renumber(Records& records) {
    for (std::size_t place = 0; place < records.size(); ++place) {
        records[place].Order = static_cast<std::int16_t>(place);
    }
}

/// Moves the first record of a variable to the head of another list.
void Move(Records& from, std::int16_t var, Records& to) {
    const Drill* moved = First(from, var);
    to.insert(to.begin(), *moved);
    from.erase(from.begin() + (moved - from.data()));
    Renumber(from);
    Renumber(to);
}

}  // namespace

void ReferenceAnalysis::Adopt(const CDrillDown& module) {
    ValidVar = module.ValidVar;
    DataChanged = module.DataChanged;
    WeightedMoments = module.WeightedMoments;
    Drills.Casewise = module.CasewiseDeletionOfMD;
    Reviews.Casewise = module.RVCasewiseDeletionOfMD;
    Drills.Open.assign(module.DrillDowns->begin(), module.DrillDowns->end());
    Reviews.Open.assign(module.Reviews->begin(), module.Reviews->end());
    Steps.assign(module.DrillUps->begin(), module.DrillUps->end());
}

int ReferenceAnalysis::ChooseLists(const VariableLists& lists) {
    Reviews.Lists = {};
    Reviews.Open.clear();
    Steps.clear();
    ValidVar = 0;
    if (!Scan(*this, Drills, lists)) {
        Drills.Open.clear();
    }
    return 1;
}

int ReferenceAnalysis::ReviewLists(const VariableLists& lists) {
    Scan(*this, Reviews, lists);
    DataChanged = 0;
    return 1;
}

int ReferenceAnalysis::ReadAfterDrill() {
    ForEachRecord(*this, EmptyCategories);
    const Reading read = Read(*this, true);
    ValidVar = static_cast<std::int32_t>(read.Cases.size());
    Describe(*this, Drills, read, {false, true, &Drill::RebuildCategories});
    Describe(*this, Reviews, read, {false, false, &Drill::MakeNeatCategories});
    if (!read.Completed) {
        ForEachRecord(*this, EmptyCategories);
    }
    return read.Completed ? 1 : 0;
}

int ReferenceAnalysis::ReadBeforeDrill() {
    const auto variables = [](const VariableLists& lists) { return lists.First.size() + lists.Second.size(); };
    if (std::exchange(DataChanged, 0) != 0 && variables(Drills.Lists) + variables(Reviews.Lists) > 0) {
        ReadAfterDrill();
    }
    ForEachRecord(*this, [](Drill& record) {
        for (const Categories& category : record.CategorySet) {
            Editable(category).Count = 0.0;
        }
    });
    const Reading read = Read(*this, true);
    Count(*this, Drills, read, [this](Drill& record, double x, double weight) {
        TakesDistinctValues(record) ? AddDistinctValue(Drills.Open, record, x, weight)
                                    : AddToInterval(record, x, weight);
    });
    Count(*this, Reviews, read, AddToInterval);
    ForEachRecord(*this, [&](Drill& record) { record.Isset = read.Completed ? 1 : 0; });
    return read.Completed ? 1 : 0;
}

int ReferenceAnalysis::FillIntervals(bool remaining) {
    const auto isListed = [&](const Drill& each) { return std::ranges::count(Drills.Lists.Second, each.VarNo) > 0; };
    const std::int16_t option = std::exchange(Drills.Casewise, remaining ? std::int16_t{1} : Drills.Casewise);
    const Reading read = Read(*this, remaining);
    Count(*this, Drills, read, [&](const Drill& record, double x, double weight) {
        Drill& first = *First(Drills.Open, record.VarNo);
        if (remaining ? record.VarType == 1 : isListed(record) && &record == &first) {
            AddToInterval(first, x, weight);
        }
    });
    Drills.Casewise = option;
    for (Drill& record : Drills.Open) {
        if (read.Completed && (remaining ? record.VarType == 1 : isListed(record))) {
            record.Isset = 1;
        }
    }
    return read.Completed ? 1 : 0;
}

int ReferenceAnalysis::MoveDown(std::int16_t var, std::int32_t row) {
    Drill& record = *First(Drills.Open, var);
    record.ChosenCategory = 0;  // ends behind the last category, at Missing
    for (const Categories& each : record.CategorySet) {
        if (std::abs(OrderedBits(each.Count)) > 15 && row-- == 0) {
            break;
        }
        ++record.ChosenCategory;
    }
    Move(Drills.Open, var, Steps);
    return 1;
}

int ReferenceAnalysis::MoveUp(std::int16_t var) {
    First(Steps, var)->ChosenCategory = -1;
    Move(Steps, var, Drills.Open);
    return 1;
}

int ReferenceAnalysis::Reorder(Records& records, const std::vector<std::int32_t>& places) {
    const auto behind = static_cast<std::int32_t>(records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        records[i].Order = static_cast<std::int16_t>(places[i] < 0 ? behind : places[i]);
    }
    std::ranges::stable_sort(records, {}, &Drill::Order);
    Renumber(records);
    return 1;
}

}  // namespace drilltest
