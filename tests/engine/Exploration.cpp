#include "tests/engine/Exploration.h"

#include <bit>
#include <cmath>
#include <sstream>

namespace drilltest {

namespace {

bool Same(double left, double right) {
    return (std::isnan(left) && std::isnan(right)) ||
           std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

template <typename Value>
bool Same(const Value& left, const Value& right) {
    return left == right;
}

/// Remembers the first difference that it is shown.
struct Comparison {
    template <typename Value>
    void operator()(const char* field, const Value& left, const Value& right) {
        if (Found.empty() && !Same(left, right)) {
            std::ostringstream text;
            text.precision(17);
            text << field << ' ' << left << " / " << right;
            Found = text.str();
        }
    }
    std::string Found;
};

void Compare(Comparison& compare, const Categories& left, const Categories& right, bool names) {
    compare("Kind", left.Kind, right.Kind);
    compare("Count", left.Count, right.Count);
    compare("Upper", left.Upper, right.Upper);
    compare("Lower", left.Lower, right.Lower);
    if (names) {
        compare("category name", left.Name, right.Name);
    }
}

/// Compares two sequences of records.
template <typename Left, typename Right>
std::string SetDifference(const Left& left, const Right& right, bool names) {
    Comparison sizes;
    sizes("size", left.size(), right.size());
    auto other = right.begin();
    for (auto it = left.begin(); sizes.Found.empty() && it != left.end(); ++it, ++other) {
        if (const std::string found = Difference(*it, *other, names); !found.empty()) {
            return found + " in record " + it->Name;
        }
    }
    return sizes.Found;
}

std::string Labelled(const std::string& label, const std::string& found) {
    return found.empty() ? found : label + ": " + found + '\n';
}

std::string Differences(const CDrillDown& module, const ReferencePasses& plain, const std::string& road) {
    Comparison members;
    members("ValidVar", module.ValidVar, plain.ValidVar);
    members("DataChanged", module.DataChanged, plain.DataChanged);
    return Labelled(road, members.Found) +
           Labelled(road + " DrillDowns", SetDifference(*module.DrillDowns, plain.DrillDowns, false)) +
           Labelled(road + " DrillUps", SetDifference(*module.DrillUps, plain.DrillUps, false)) +
           Labelled(road + " Reviews", SetDifference(*module.Reviews, plain.Reviews, false));
}

template <typename Target>
void ApplySettings(Target& target, const Operation& operation) {
    target.WeightedMoments = operation.Flags[0];
    target.CasewiseDeletionOfMD = operation.Flags[1];
    target.RVCasewiseDeletionOfMD = operation.Flags[2];
    target.DataChanged = operation.Flags[3];
}

/// A record of a set, or null without any.
template <typename Set>
Drill* RecordAt(Set& set, std::size_t place) {
    return set.empty() ? nullptr : &Editable(*std::next(set.begin(), static_cast<std::ptrdiff_t>(place % set.size())));
}

/// Steps of the interval method multiply where values are far apart, so it is taken only where they aren't.
bool Suits(const Drill& record, const Drill& method) {
    return method.Method != StepIntervals || (std::fabs(record.Min) < 1e4 && std::fabs(record.Max) < 1e4);
}

template <typename Set>
void ApplyCategorize(Set& set, const Operation& operation, std::int16_t& dataChanged) {
    Drill* record = RecordAt(set, operation.Place);
    if (record != nullptr && Suits(*record, operation.Method)) {
        Categorize(*record, operation.Method);
        dataChanged = 1;
    }
}

template <typename Set>
void ForEach(Set& set, void (*change)(Drill&)) {
    for (const Drill& record : set) {
        change(Editable(record));
    }
}

void MarkStale(Drill& record) {
    record.Isset = 0;
}

void ApplyDown(DrillBench& bench, const Operation& operation) {
    if (const Drill* record = RecordAt(*bench.Analysis().DrillDowns, operation.Place)) {
        bench.Focus(record->VarNo);
        const Drill& current = *bench.Analysis().LookFor(bench.Analysis().CurrentDown, bench.Analysis().DrillDowns);
        bench.Take(static_cast<int>(operation.Row % (static_cast<std::size_t>(DrillBench::Rows(current)) + 1)));
    }
}

void ApplyDown(ReferencePasses& plain, const Operation& operation) {
    const Drill* chosen = RecordAt(plain.DrillDowns, operation.Place);
    if (chosen == nullptr) {
        return;
    }
    const Drill& record = *plain.First(plain.DrillDowns, chosen->VarNo);
    if (plain.DataChanged == 1) {
        plain.ReadAfterDrill();
    }
    if (record.Isset == 0) {
        plain.ReadBeforeDrill();
    }
    const auto rows = static_cast<std::size_t>(DrillBench::Rows(record));
    plain.MoveDown(record.VarNo, static_cast<int>(operation.Row % (rows + 1)));
    plain.ReadAfterDrill();
    ForEach(plain.DrillDowns, MarkStale);
}

void ApplyUp(DrillBench& bench, const Operation& operation) {
    if (const std::size_t steps = bench.Analysis().DrillUps->size(); steps > 0) {
        bench.UpPlace(static_cast<int>(operation.Place % steps));
    }
}

void ApplyUp(ReferencePasses& plain, const Operation& operation) {
    if (const Drill* step = RecordAt(plain.DrillUps, operation.Place)) {
        plain.MoveUp(step->VarNo);
        plain.ReadAfterDrill();
    }
}

void MakeNeat(Drill& record) {
    if (record.Method != DistinctValues) {
        record.MakeNeatCategories();
    }
}

void RebuildContinuous(Drill& record) {
    if (record.VarType == ContinuousVariable) {
        record.RebuildCategories();
    }
}

/// How an operation is carried out on the module and on the reference.
struct VerbRow {
    Operation::Verb Verb;
    const char* Name;
    void (*OnModule)(DrillBench&, const Operation&);
    void (*OnPlain)(ReferencePasses&, const Operation&);
};

using Op = const Operation;

// clang-format off
constexpr std::array<VerbRow, Operation::Verbs> VerbTable{{
    {Operation::Choose, "Choose",
     [](DrillBench& b, Op& o) { b.ChooseLists(o.Lists); },
     [](ReferencePasses& p, Op& o) { p.ChooseDrills(o.Lists); }},
    {Operation::Review, "Review",
     [](DrillBench& b, Op& o) { b.ReviewLists(o.Lists); },
     [](ReferencePasses& p, Op& o) { p.ChooseReviews(o.Lists); }},
    {Operation::Settings, "Settings",
     [](DrillBench& b, Op& o) { ApplySettings(b.Analysis(), o); },
     [](ReferencePasses& p, Op& o) { ApplySettings(p, o); }},
    {Operation::Categorize, "Categorize",
     [](DrillBench& b, Op& o) { CDrillDown& a = b.Analysis();
                                ApplyCategorize(o.InReviews ? *a.Reviews : *a.DrillDowns, o, a.DataChanged); },
     [](ReferencePasses& p, Op& o) { ApplyCategorize(o.InReviews ? p.Reviews : p.DrillDowns, o, p.DataChanged); }},
    {Operation::Select, "Select",
     [](DrillBench& b, Op& o) { b.Host().SetSelection(o.Selection); },
     [](ReferencePasses& p, Op& o) { p.Selection = o.Selection; }},
    {Operation::Weigh, "Weigh",
     [](DrillBench& b, Op& o) { b.Host().SetWeight(o.Weight); },
     [](ReferencePasses& p, Op& o) { p.Weight = o.Weight; }},
    {Operation::Down, "Down", ApplyDown, ApplyDown},
    {Operation::Up, "Up", ApplyUp, ApplyUp},
    {Operation::ReadAfterDrill, "ReadAfterDrill",
     [](DrillBench& b, Op&) { b.Analysis().ReadAfterDrill(0); },
     [](ReferencePasses& p, Op&) { p.ReadAfterDrill(); }},
    {Operation::ReadBeforeDrill, "ReadBeforeDrill",
     [](DrillBench& b, Op&) { b.Analysis().ReadBeforeDrill(0); },
     [](ReferencePasses& p, Op&) { p.ReadBeforeDrill(); }},
    {Operation::FillNeatIntervals, "FillNeatIntervals",
     [](DrillBench& b, Op&) { b.Analysis().FillNeatIntervals(); },
     [](ReferencePasses& p, Op&) { p.FillNeatIntervals(); }},
    {Operation::FillContinuousIntervals, "FillContinuousIntervals",
     [](DrillBench& b, Op&) { b.Analysis().FillContinuousIntervals(); },
     [](ReferencePasses& p, Op&) { p.FillContinuousIntervals(); }},
    {Operation::SetContinuousIntervals, "SetContinuousIntervals",
     [](DrillBench& b, Op&) { b.Analysis().SetContinuousIntervals(); },
     [](ReferencePasses& p, Op&) { ForEach(p.DrillDowns, RebuildContinuous); ForEach(p.Reviews, RebuildContinuous); }},
    {Operation::SetNeatIntervals, "SetNeatIntervals",
     [](DrillBench& b, Op&) { b.Analysis().SetNeatIntervals(); },
     [](ReferencePasses& p, Op&) { ForEach(p.DrillDowns, MakeNeat); }},
    {Operation::MarkStale, "MarkStale",
     [](DrillBench& b, Op&) { b.Analysis().SetAllIsset(0); },
     [](ReferencePasses& p, Op&) { ForEach(p.DrillDowns, MarkStale); }},
}};
// clang-format on

}  // namespace

std::string Text(const Operation& operation) {
    return std::string(VerbTable[operation.What].Name) + ' ' + std::to_string(operation.Place) + ' ' +
           std::to_string(operation.Row) + '\n';
}

void Categorize(Drill& record, const Drill& method) {
    record.Method = method.Method;
    record.ExactCount = method.ExactCount;
    record.NeatCount = method.NeatCount;
    record.StepSize = method.StepSize;
    record.StepStart = method.StepStart;
    record.StartAtMin = method.StartAtMin;
    record.UserInterv = method.UserInterv;
    record.NU = method.NU;
    record.RebuildCategories();
}

std::string Difference(const Drill& left, const Drill& right, bool names) {
    Comparison compare;
    const auto compareMembers = [&](const auto&... field) {
        (compare(field.first, left.*field.second, right.*field.second), ...);
    };
    using std::pair;
    compareMembers(pair{"VarNo", &Drill::VarNo}, pair{"VarType", &Drill::VarType}, pair{"Name", &Drill::Name},
                   pair{"ValidCount", &Drill::ValidCount}, pair{"ValidWeight", &Drill::ValidWeight},
                   pair{"MissingCount", &Drill::MissingCount}, pair{"MissingWeight", &Drill::MissingWeight},
                   pair{"Min", &Drill::Min}, pair{"Max", &Drill::Max}, pair{"Mean", &Drill::Mean},
                   pair{"SumSquares", &Drill::SumSquares}, pair{"Method", &Drill::Method},
                   pair{"ExactCount", &Drill::ExactCount}, pair{"NeatCount", &Drill::NeatCount},
                   pair{"StepSize", &Drill::StepSize}, pair{"StepStart", &Drill::StepStart},
                   pair{"StartAtMin", &Drill::StartAtMin}, pair{"NU", &Drill::NU}, pair{"Isset", &Drill::Isset},
                   pair{"Order", &Drill::Order}, pair{"ChosenCategory", &Drill::ChosenCategory});
    for (std::size_t i = 0; i < static_cast<std::size_t>(left.NU); ++i) {
        compare("UserInterv", left.UserInterv[i], right.UserInterv[i]);
    }
    compare("categories", left.CategorySet.size(), right.CategorySet.size());
    auto other = right.CategorySet.begin();
    for (auto it = left.CategorySet.begin(); compare.Found.empty() && it != left.CategorySet.end(); ++it, ++other) {
        Compare(compare, *it, *other, names);
    }
    return compare.Found;
}

Exploration::Exploration(const quillara::DataTable& table) : Plain(table) {
    Cases.Open(table);
    Columns.Open(table);
}

void Exploration::Apply(const Operation& operation) {
    const VerbRow& row = VerbTable[operation.What];
    row.OnModule(Cases, operation);
    row.OnModule(Columns, operation);
    row.OnPlain(Plain, operation);
}

void Exploration::CancelAt(int poll) {
    Cases.CancelAt(poll);
    Columns.CancelAt(poll);
    Plain.Polls = 0;
    Plain.CancelPoll = poll;
}

std::string Exploration::Differences() const {
    const CDrillDown& cases = Cases.Analysis();
    const CDrillDown& columns = Columns.Analysis();
    Comparison roads;
    roads("CurrentDown", cases.CurrentDown, columns.CurrentDown);
    roads("CurrentUp", cases.CurrentUp, columns.CurrentUp);
    roads("polls on the roads", Cases.Polls(), Columns.Polls());
    roads("polls", Cases.Polls(), Plain.Polls);
    return Labelled("roads", roads.Found) +
           Labelled("DrillDowns on the roads", SetDifference(*cases.DrillDowns, *columns.DrillDowns, true)) +
           Labelled("Reviews on the roads", SetDifference(*cases.Reviews, *columns.Reviews, true)) +
           drilltest::Differences(cases, Plain, "case by case") + drilltest::Differences(columns, Plain, "columns");
}

}  // namespace drilltest
