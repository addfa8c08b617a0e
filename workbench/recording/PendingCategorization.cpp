#include "workbench/recording/PendingCategorization.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/AnalysisDialog.h"
#include "host/TextFunctions.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/recording/PythonText.h"
#include "workbench/recording/RecordedMembers.h"
#include "workbench/recording/RecordedVariables.h"

namespace quillara {
namespace {

using Lines = PendingCategorization::Lines;

constexpr const char* Blank = " ";
constexpr int ListNumberMode = 5;

void Append(Lines& lines, const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

/// The numbers of a list; nothing when one of its words isn't a number.
std::optional<std::vector<double>> NumbersIn(std::string_view text, const std::string& separators) {
    std::vector<double> numbers;
    for (std::size_t begin = text.find_first_not_of(separators); begin < text.size();
         begin = text.find_first_not_of(separators, begin)) {
        const std::size_t end = std::min(text.find_first_of(separators, begin), text.size());
        const std::string word(text.substr(begin, end - begin));
        double number = 0.0;
        if (GetDouble(ListNumberMode, word.c_str(), static_cast<int>(word.size()), &number) != 0) {
            return std::nullopt;
        }
        numbers.push_back(number);
        begin = end;
    }
    return numbers;
}

/// The text that the member takes for boundaries that a person has typed: what it reads, where that gives the same.
std::string MemberText(const std::string& typed, const std::string& read) {
    const auto meant = NumbersIn(typed, std::string(Blank) + GetListSep());
    const auto taken = NumbersIn(read, Blank);
    return meant && taken && *meant == *taken ? read.substr(std::min(read.find_first_not_of(Blank), read.size())) : "";
}

}  // namespace

bool PendingCategorization::IsNeeded(const ShownCategorization& page) const {
    return Given || !page.IsLike(Shown);
}

int PendingCategorization::RowOf(const std::string& variable) const {
    const std::vector<std::string>& rows = DialogHost::WindowOf(*Dialog)->At(DrillDownListControl).Rows;
    return static_cast<int>(std::ranges::find(rows, variable) - rows.begin());
}

std::string PendingCategorization::TakeVariable(const std::string& variable) {
    Variable = variable;
    return "drill." + MemberOf(*Dialog, DrillDownListControl) + " = " +
           PythonVariable(*Dialog, DrillDownListControl, variable);
}

Lines PendingCategorization::TakeVariableIfOther(const std::string& variable) {
    return variable == Variable || variable.empty() ? Lines() : Lines{TakeVariable(variable)};
}

Lines PendingCategorization::TakeRowClick(const std::string& variable) {
    return TakeRowClick(RowOf(variable));
}

Lines PendingCategorization::TakeRowClick(int row) {
    const std::vector<std::string>& rows = DialogHost::WindowOf(*Dialog)->At(DrillDownListControl).Rows;
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size()) {
        return {};
    }
    const std::string& text = rows[static_cast<std::size_t>(row)];
    const bool isFirst = std::ranges::find(rows, text) - rows.begin() == row && IsPlainPython(text);
    Variable = text;
    return {"drill.window.select(" + std::to_string(DrillDownListControl) + ", " +
            (isFirst ? PythonText(text) + ")" : std::to_string(row) + ")" + PythonComment(text))};
}

Lines PendingCategorization::TakePage(const ShownCategorization& page, const std::string& variable, Storing next) {
    Lines lines;
    IsStored = false;
    if (!page.CanBeChanged || !IsNeeded(page)) {
        return lines;
    }
    Unread.insert(variable);
    if (Given && !CanBeWritten(page, next)) {
        lines = TakeBoundariesDialog(variable);
    }
    IsStored = !lines.empty() && page.IsLike(Shown);
    Append(lines, TakeVariableIfOther(variable));
    if (!page.IsLike(Shown)) {
        Append(lines, CategorizationLines(*Dialog, page, Shown));
    }
    if (Given) {
        lines.push_back("drill." + MemberOf(*Dialog, StatisticsGroup) + " = " + PythonText(Given->Member));
    }
    Settle(page);
    return lines;
}

/// Boundaries count by their member as those of the dialog do when they are the first of their variable and the cases
/// are read next.
bool PendingCategorization::CanBeWritten(const ShownCategorization& page, Storing next) const {
    return next == Storing::AndReading && page.Method == ShownCategorization::UserIntervals &&
           page.Method != Shown.Method && !Given->Member.empty();
}

/// It opens for a variable that is selected in the list, and stores the page.
Lines PendingCategorization::TakeBoundariesDialog(const std::string& variable) {
    Lines lines = TakeRowClick(variable);
    const std::vector<WindowCall> calls{{"text", {double{BoundariesEdit}, Given->Typed}},
                                        {"click", {double{OkCommand}}}};
    lines.push_back("drill." + MemberOf(*Dialog, UserIntervalsRadio) + " = 1");
    lines.push_back("drill.Application.Answer(" + PythonAnswer(calls) + ")");
    lines.push_back("drill.window.click(" + std::to_string(BoundariesButton) + ")");
    Given.reset();
    Shown.Method = ShownCategorization::UserIntervals;
    Shown.CanBeChanged = true;
    return lines;
}

Lines PendingCategorization::TakeStored(const std::string& variable) {
    if (!Stored && !Given) {
        return {};
    }
    const ShownCategorization page = Stored.value_or(Shown);
    Lines lines = TakePage(page, variable, Storing::Alone);
    if (!IsStored) {
        Append(lines, TakeRowClick(variable));
    }
    return lines;
}

void PendingCategorization::StoreByClick(const ShownCategorization& page, const std::string& variable, int row) {
    ListClick click{variable, Shown, Given, {}, {}};
    const std::string current = std::exchange(Variable, {});
    click.Written = TakePage(page, variable, Storing::Alone);
    if (!IsStored) {
        Append(click.Written, TakeRowClick(row));
    }
    click.Current = std::exchange(Variable, current);
    Clicks.push_back(std::move(click));
}

bool PendingCategorization::HasClickOf(const std::string& variable) const {
    return std::ranges::find(Clicks, variable, &ListClick::Variable) != Clicks.end();
}

Lines PendingCategorization::TakeListClicks() {
    Lines lines;
    for (ListClick& click : std::exchange(Clicks, {})) {
        Append(lines, click.Written);
        Variable = std::move(click.Current);
    }
    return lines;
}

Lines PendingCategorization::TakeListClicksBefore(const std::string& variable, const ShownCategorization& page) {
    const auto own = std::ranges::find(Clicks, variable, &ListClick::Variable);
    if (own != Clicks.end() && !Stored && !IsNeeded(page)) {
        Shown = own->Before;
        Given = own->Given;
        Clicks.erase(own);
    }
    return TakeListClicks();
}

void PendingCategorization::Store(const ShownCategorization& page) {
    Stored = page.IsLike(Shown) ? std::nullopt : std::optional(page);
}

void PendingCategorization::TakeBoundaries(std::string typed, const std::string& read,
                                           const ShownCategorization& page) {
    Given = Boundaries{typed, MemberText(typed, read)};
    Store(page);
}

void PendingCategorization::Read() {
    Unread.clear();
    AllUnread = false;
}

void PendingCategorization::Settle(const ShownCategorization& page) {
    Shown = page;
    Stored.reset();
    Given.reset();
}

}  // namespace quillara
