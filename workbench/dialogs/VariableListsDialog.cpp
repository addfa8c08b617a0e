#include "workbench/dialogs/VariableListsDialog.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "platform/WindowMessages.h"
#include "workbench/data/Errors.h"
#include "workbench/dialogs/DialogIds.h"

namespace quillara {
namespace {

using Dialog = VariableListsDialog;

// clang-format off
constexpr ControlResource Controls[] = {
    // Id                    Kind                        Caption                   X    Y    W    H
    {NoControlId,            ControlKind::Static,        "&Variables:",         {  7,   8, 118,   9}},
    {Dialog::AvailableList,  ControlKind::ReportList,    "",                    {  7,  19, 118, 183}},
    {Dialog::FirstLabel,     ControlKind::Static,        "",                    {189,   8,  78,   9}},
    {Dialog::FirstCount,     ControlKind::Static,        "",                    {269,   8,  38,   9}},
    {Dialog::FirstList,      ControlKind::ReportList,    "",                    {189,  19, 118,  82}},
    {Dialog::AddToFirst,     ControlKind::Button,        "&Add >",              {131,  42,  52,  14}},
    {Dialog::TakeFromFirst,  ControlKind::Button,        "< &Remove",           {131,  60,  52,  14}},
    {Dialog::SecondLabel,    ControlKind::Static,        "",                    {189, 109,  78,   9}},
    {Dialog::SecondCount,    ControlKind::Static,        "",                    {269, 109,  38,   9}},
    {Dialog::SecondList,     ControlKind::ReportList,    "",                    {189, 120, 118,  82}},
    {Dialog::AddToSecond,    ControlKind::Button,        "A&dd >",              {131, 143,  52,  14}},
    {Dialog::TakeFromSecond, ControlKind::Button,        "< R&emove",           {131, 161,  52,  14}},
    {OkCommand,              ControlKind::DefaultButton, "OK",                  {203, 210,  50,  14}},
    {CancelCommand,          ControlKind::Button,        "Cancel",              {257, 210,  50,  14}},
};

/// The controls of the two lists.
struct Side {
    int Label;
    int Count;
    int List;
    int Add;
    int Take;
};

constexpr std::array<Side, 2> Sides = {{
    {Dialog::FirstLabel,  Dialog::FirstCount,  Dialog::FirstList,  Dialog::AddToFirst,  Dialog::TakeFromFirst},
    {Dialog::SecondLabel, Dialog::SecondCount, Dialog::SecondList, Dialog::AddToSecond, Dialog::TakeFromSecond},
}};

constexpr const char* NameOf(ValueKind kind) {
    switch (kind) {
        case ValueKind::Date:      return "date";
        case ValueKind::TimeOfDay: return "time of day";
        case ValueKind::DateTime:  return "date and time";
        case ValueKind::Text:      return "text";
        default:                   return "number";
    }
}
// clang-format on

constexpr DialogResource Resource{VariableListsDialogId, "Select variables", 314, 231, Controls};

std::vector<short> NumbersIn(const Control& list) {
    std::vector<short> numbers;
    for (const ReportRow& row : list.ReportRows) {
        numbers.push_back(static_cast<short>(NumberOf(row)));
    }
    return numbers;
}

std::string CountOf(int number) {
    return std::to_string(number) + (number == 1 ? " variable" : " variables");
}

/// "3 chosen", or with the limits that there are: "3 chosen, 1 to 5".
std::string CountIn(const VariableListRequest& request, std::size_t entries, std::size_t offered) {
    const bool isLimited = static_cast<std::size_t>(request.Highest) < offered;
    std::string text = std::to_string(entries) + " chosen";
    if (isLimited && request.Lowest == request.Highest) {
        return text + " of " + std::to_string(request.Highest);
    }
    if (isLimited) {
        return text + ", " + std::to_string(request.Lowest) + " to " + std::to_string(request.Highest);
    }
    return request.Lowest > 0 ? text + ", at least " + std::to_string(request.Lowest) : text;
}

std::string WithoutColon(std::string label) {
    if (label.ends_with(':')) {
        label.pop_back();
    }
    return label;
}

void CheckCount(const VariableListRequest& request, std::size_t entries) {
    const auto count = static_cast<int>(entries);
    const std::string label = WithoutColon(request.Label);
    if (count < request.Lowest) {
        throw UsageError(label + ": choose at least " + CountOf(request.Lowest) + ".");
    }
    if (count > request.Highest) {
        throw UsageError(label + ": choose at most " + CountOf(request.Highest) + ", not " + std::to_string(count) +
                         ".");
    }
}

std::string TypeOf(const Variable& variable) {
    const bool hasNames = variable.Kind != ValueKind::Text && variable.HasLabels();
    return NameOf(variable.Kind) + std::string(hasNames ? ", labelled" : "");
}

/// Throws UsageError saying which limit isn't kept.
void CheckCounts(const VariableListsRequest& request, std::size_t first, std::size_t second) {
    CheckCount(request.Lists[0], first);
    CheckCount(request.Lists[1], second);
    const auto total = static_cast<int>(first + second);
    if (total > request.HighestTotal) {
        throw UsageError("Choose at most " + CountOf(request.HighestTotal) + " in both lists together, not " +
                         std::to_string(total) + ".");
    }
}

bool AreOffered(const std::vector<short>& numbers, const std::vector<short>& offered) {
    const std::set<short> once(numbers.begin(), numbers.end());
    return once.size() == numbers.size() && std::ranges::all_of(numbers, [&offered](short number) {
               return std::ranges::find(offered, number) != offered.end();
           });
}

/// The rows of a list by the numbers of their variables.
std::map<int, int> RowsByNumber(const Control& list) {
    std::map<int, int> rows;
    for (const ReportRow& row : list.ReportRows) {
        rows.emplace(NumberOf(row), static_cast<int>(rows.size()));
    }
    return rows;
}

void CheckAnswer(const std::vector<short>& numbers, const std::map<int, int>& offered) {
    std::set<short> named;
    for (const short number : numbers) {
        if (!offered.contains(number)) {
            throw UsageError("There is no variable " + std::to_string(number) + " to choose.");
        }
        if (!named.insert(number).second) {
            throw UsageError("The variable " + std::to_string(number) + " is named twice for one list.");
        }
    }
}

void Fill(Window& window, const Side& side, const std::vector<short>& numbers, const std::map<int, int>& offered) {
    while (!window.At(side.List).ReportRows.empty()) {
        window.ClickRow(side.List, static_cast<int>(window.At(side.List).ReportRows.size()) - 1);
        window.Click(side.Take);
    }
    for (const short number : numbers) {
        window.ClickRow(Dialog::AvailableList, offered.at(number));
        window.Click(side.Add);
    }
}

}  // namespace

bool AreWithinLimits(const VariableListsRequest& request) {
    const auto& [first, second] = request.Lists;
    if (!AreOffered(first.Chosen, request.Offered) || !AreOffered(second.Chosen, request.Offered)) {
        return false;
    }
    try {
        CheckCounts(request, first.Chosen.size(), second.Chosen.size());
        return true;
    } catch (const UsageError&) {
        return false;
    }
}

VariableListsDialog::VariableListsDialog(MessageQueue& queue, const DataTable& table, VariableListsRequest request,
                                         Tell tell)
    : HostDialog(queue, Resource, request.Title, std::move(tell)), Table(table), Request(std::move(request)) {
    for (const int list : {AvailableList, FirstList, SecondList}) {
        At(list).Columns = {{"Name", 90}, {"Type", 60}, {"Label", 140}};
    }
    for (const short number : Request.Offered) {
        Add(AvailableList, number);
    }
    for (std::size_t i = 0; i < Sides.size(); ++i) {
        At(Sides[i].Label).Text = Request.Lists[i].Label;
        for (const short number : Request.Lists[i].Chosen) {
            if (Holds[AvailableList].contains(number)) {
                Add(Sides[i].List, number);
            }
        }
    }
    Update();
}

std::array<std::vector<short>, 2> VariableListsDialog::Chosen() {
    return {NumbersIn(At(FirstList)), NumbersIn(At(SecondList))};
}

void VariableListsDialog::Use(int control) {
    for (const Side& side : Sides) {
        if (control == side.Add) {
            if (const ReportRow* selected = SelectedRow(At(AvailableList))) {
                Add(side.List, static_cast<short>(NumberOf(*selected)));
            }
        } else if (control == side.Take) {
            Take(side.List);
        }
    }
}

bool VariableListsDialog::IsVariable(short number) const {
    return number >= 1 && static_cast<std::size_t>(number) <= Table.Variables.size();
}

/// Adds a variable at the end of a list, unless it stands there or nowhere.
void VariableListsDialog::Add(int list, short number) {
    if (IsVariable(number) && !Holds[list].contains(number)) {
        const Variable& variable = Table.Variables[static_cast<std::size_t>(number) - 1];
        At(list).ReportRows.push_back(NumberedRow(number, {variable.Name, TypeOf(variable), variable.LongName}));
        Holds[list].insert(number);
    }
}

void VariableListsDialog::Take(int list) {
    Control& control = At(list);
    if (const ReportRow* row = SelectedRow(control)) {
        Holds[list].erase(NumberOf(*row));
        control.ReportRows.erase(control.ReportRows.begin() + control.Selected);
        control.Selected = std::min(control.Selected, static_cast<int>(control.ReportRows.size()) - 1);
    }
}

void VariableListsDialog::Accept() {
    const auto [first, second] = Chosen();
    CheckCounts(Request, first.size(), second.size());
}

void VariableListsDialog::Update() {
    const ReportRow* available = SelectedRow(At(AvailableList));
    const std::size_t offered = At(AvailableList).ReportRows.size();
    for (std::size_t i = 0; i < Sides.size(); ++i) {
        const Side& side = Sides[i];
        At(side.Count).Text = CountIn(Request.Lists[i], At(side.List).ReportRows.size(), offered);
        At(side.Add).Enabled = available != nullptr && !Holds[side.List].contains(NumberOf(*available));
        At(side.Take).Enabled = SelectedRow(At(side.List)) != nullptr;
    }
}

void ChooseVariables(Window& window, const std::vector<short>& first, const std::vector<short>& second) {
    if (window.Resource().Id != VariableListsDialogId) {
        throw UsageError("The window \"" + std::string(window.Resource().Title) + "\" takes no lists of variables.");
    }
    const std::map<int, int> offered = RowsByNumber(window.At(Dialog::AvailableList));
    CheckAnswer(first, offered);
    CheckAnswer(second, offered);
    Fill(window, Sides[0], first, offered);
    Fill(window, Sides[1], second, offered);
    window.Click(OkCommand);
}

}  // namespace quillara
