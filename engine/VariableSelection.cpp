#include <algorithm>
#include <array>
#include <span>

#include "engine/DisplayNames.h"
#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "host/WindowServices.h"
#include "resources/ControlIds.h"
#include "resources/StringTable.h"

using namespace drilldown;

namespace {

using VariableList = std::span<const std::int16_t>;

VariableList List(const std::int16_t* entries, std::int16_t count) {
    return {entries, static_cast<std::size_t>(count)};
}

bool Contains(VariableList list, int var) {
    return std::find(list.begin(), list.end(), var) != list.end();
}

struct TypedList {
    VariableList Variables;
    std::int16_t Type;
};

/// Makes the records of a list, behind those that the set has already.
void InsertRecords(CDrillDown& analysis, CDrillDown::DrillSet& set, const TypedList& list, char* nameField) {
    for (const std::int16_t var : list.Variables) {
        const auto order = static_cast<std::int16_t>(set.size());
        set.emplace(var, list.Type, order, DisplayName(analysis, var, nameField));
    }
}

/// Shows the drill-down variables in the startup dialog; nothing has been drilled on yet.
void ShowDrillDowns(HWND dialog, const char* const* names) {
    constexpr const char* none[] = {nullptr};
    EnableWindow(GetDlgItem(dialog, DrillDownListControl), true);
    EnableWindow(GetDlgItem(dialog, BrushButton), true);
    InitStaticListBox(GetDlgItem(dialog, DrillDownListControl), names);
    EnableWindow(GetDlgItem(dialog, DrillUpListControl), false);
    InitStaticListBox(GetDlgItem(dialog, DrillUpListControl), none);
}

/// Intended: AllReviewVars stays, unlike the other lists; the next choice of review variables replaces it.
void DropReviewSelection(CDrillDown& analysis) {
    analysis.NoRVCategorical = analysis.NoRVContinuous = 0;
    analysis.FirstVarCount = analysis.SecondVarCount = 0;
    const int entries = analysis.Table.Variables + 1;
    for (std::int16_t* list :
         {analysis.RVCategorical, analysis.RVContinuous, analysis.FirstVarList, analysis.SecondVarList}) {
        std::fill_n(list, entries, std::int16_t{0});
    }
    analysis.Reviews->clear();
}

/// False when a file was opened without memory for its arrays and there still is none.
bool HasArrays(CDrillDown& analysis) {
    return analysis.Categorical != nullptr || analysis.Init() != 0;
}

/// Copies the entries of a list that stand among the review variables to `kept`, as often as they stand there.
/// Gives the number of copies, at most `room`.
std::int16_t KeepReviewed(VariableList list, VariableList reviewed, std::int16_t* kept, int room) {
    std::int16_t count = 0;
    for (const std::int16_t var : list) {
        const auto copies = std::min<std::ptrdiff_t>(std::count(reviewed.begin(), reviewed.end(), var), room - count);
        std::fill_n(kept + count, copies, var);
        count = static_cast<std::int16_t>(count + copies);
    }
    return count;
}

/// Filters the two lists of the 3D histograms against the new review variables; false without memory.
bool FilterHistogramLists(CDrillDown& analysis, VariableList reviewed) {
    const int room = analysis.Table.Variables + 1;
    const auto entries = static_cast<std::size_t>(room);
    const HostBuffer<std::int16_t> first(analysis, entries);
    const HostBuffer<std::int16_t> second(analysis, entries);
    if (!first || !second) {
        return false;
    }
    analysis.FirstVarCount =
        KeepReviewed(List(analysis.FirstVarList, analysis.FirstVarCount), reviewed, first.data(), room);
    // Intended: as many entries of the second list are looked at as the first has now, unlike for the first; the second
    // list is cut to the length of the first.
    analysis.SecondVarCount =
        KeepReviewed(List(analysis.SecondVarList, analysis.FirstVarCount), reviewed, second.data(), room);
    std::copy_n(first.data(), entries, analysis.FirstVarList);
    std::copy_n(second.data(), entries, analysis.SecondVarList);
    return true;
}

/// Lists all review variables, categorical ones first. Gives the list.
VariableList CollectReviewVariables(CDrillDown& analysis) {
    std::fill_n(analysis.AllReviewVars, 2 * (analysis.Table.Variables + 1), std::int16_t{0});
    std::int16_t* end = std::copy_n(analysis.RVCategorical, analysis.NoRVCategorical, analysis.AllReviewVars);
    end = std::copy_n(analysis.RVContinuous, analysis.NoRVContinuous, end);
    return {analysis.AllReviewVars, end};
}

/// Makes and scans the records of the drill variables; false without memory for their names.
bool StartDrilling(CDrillDown& analysis, HWND dialog) {
    const auto variables =
        static_cast<std::size_t>(analysis.NoCategorical) + static_cast<std::size_t>(analysis.NoContinuous);
    const HostBuffer<const char*> names(analysis, variables + 1);
    const HostBuffer<char> nameField(analysis, NameFieldSize);
    if (!names || !nameField) {
        return false;
    }
    CDrillDown::DrillSet& records = *analysis.DrillDowns;
    InsertRecords(analysis, records, {List(analysis.Categorical, analysis.NoCategorical), CategoricalVariable},
                  nameField.data());
    InsertRecords(analysis, records, {List(analysis.Continuous, analysis.NoContinuous), ContinuousVariable},
                  nameField.data());
    std::transform(records.begin(), records.end(), names.data(),
                   [](const Drill& record) { return record.Name.c_str(); });
    ShowDrillDowns(dialog, names.data());
    analysis.ReadDDNV(0);
    return true;
}

/// The same for the review variables.
bool StartReviewing(CDrillDown& analysis) {
    const HostBuffer<char> nameField(analysis, NameFieldSize);
    if (!nameField) {
        return false;
    }
    InsertRecords(analysis, *analysis.Reviews,
                  {List(analysis.RVCategorical, analysis.NoRVCategorical), CategoricalVariable}, nameField.data());
    InsertRecords(analysis, *analysis.Reviews,
                  {List(analysis.RVContinuous, analysis.NoRVContinuous), ContinuousVariable}, nameField.data());
    analysis.ReadRVV(0);
    // Intended: cleared here, unlike in SetDDNVariable, whose records are all new; results after a choice of review
    // variables show what the records hold.
    analysis.DataChanged = 0;
    return true;
}

/// Makes the records of a set. What fails on the way leaves none, as records that weren't scanned say nothing true.
template <typename Make>
int OrWithoutRecords(CDrillDown::DrillSet& records, Make make) {
    try {
        return make();
    } catch (...) {
        records.clear();
        throw;
    }
}

}  // namespace

int CDrillDown::SetDDNVariable(HWND dialog, unsigned short mode, int lowest1, int highest1, int lowest2, int highest2,
                               int highestTotal) {
    if (!HasArrays(*this)) {
        return 0;
    }
    std::array<int, 2> types{1, 2};
    const int answer =
        DoubleVarListDialog(dialog, mode, GetResourceString(SelectDrillVariablesText), nullptr, lowest1, highest1,
                            lowest2, highest2, highestTotal, Categorical, &NoCategorical, Continuous, &NoContinuous,
                            GetResourceString(CategoricalVariablesText), GetResourceString(ContinuousVariablesText),
                            static_cast<unsigned short>(types.size()), types.data(), 0, 0);
    if (answer == 0) {
        return 0;
    }
    DrillDowns->clear();
    DrillUps->clear();
    DropReviewSelection(*this);
    return OrWithoutRecords(*DrillDowns, [&] { return StartDrilling(*this, dialog) ? answer : 0; });
}

int CDrillDown::SetRVVariable(HWND dialog, unsigned short mode, int lowest, int highest) {
    if (!HasArrays(*this)) {
        return 0;
    }
    std::array<int, 2> types{1, 2};
    const int answer = DoubleVarListDialog(
        dialog, mode, GetResourceString(SelectReviewVariablesText), nullptr, lowest, highest, lowest, highest,
        Table.Variables, RVCategorical, &NoRVCategorical, RVContinuous, &NoRVContinuous,
        GetResourceString(CategoricalReviewVariablesText), GetResourceString(ContinuousReviewVariablesText),
        static_cast<unsigned short>(types.size()), types.data(), 0, 0);
    if (answer == 0) {
        return 0;
    }
    const bool filtered = FilterHistogramLists(*this, CollectReviewVariables(*this));
    Reviews->clear();
    return OrWithoutRecords(*Reviews, [&] { return filtered && StartReviewing(*this) ? answer : 0; });
}

std::int16_t CDrillDown::SelectedVariable(int var) const {
    const bool selected =
        Contains(List(Categorical, NoCategorical), var) || Contains(List(Continuous, NoContinuous), var) ||
        Contains(List(RVCategorical, NoRVCategorical), var) || Contains(List(RVContinuous, NoRVContinuous), var);
    return selected ? 1 : 0;
}

std::int16_t CDrillDown::IsCategoricalVariable(int var) const {
    const bool categorical =
        Contains(List(Categorical, NoCategorical), var) || Contains(List(RVCategorical, NoRVCategorical), var);
    return categorical ? 1 : 0;
}
