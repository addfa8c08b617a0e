#include "dialogs/CategorySelectionDlg.h"

#include <algorithm>
#include <optional>
#include <string>

#include "engine/DisplayNames.h"
#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "resources/ControlIds.h"
#include "resources/StringTable.h"
#include "results/texts/ResultTexts.h"

using namespace drilldown;

namespace {

constexpr std::uint32_t GridLines = 1;
constexpr std::uint32_t FullRowSelection = 32;

// In blue-green-red order.
constexpr std::uint32_t FillingColour = 0xbb0000;
constexpr std::uint32_t RestingColour = 0xff0000;

enum ListColumn : int { NameColumn, CountColumn, DescriptionColumn };

/// The values that a category stands for by the rule of the filter, so that hosts can look a row up by a value.
std::optional<RowRange> RangeOf(const Categories& category, int method) {
    switch (FactsOf(method).Rule) {
        case KeepRule::Equal:
            return RowRange{category.Upper, category.Upper, true, true};
        case KeepRule::OpenClosed:
            return RowRange{category.Lower, category.Upper, false, true};
        case KeepRule::ClosedOpen:
            return RowRange{category.Lower, category.Upper, true, false};
        default:
            return std::nullopt;
    }
}

/// Fills the list with the categories of a record.
class CategoryRows {
  public:
    /// `labelField` has room for NameFieldSize bytes. All outlive it.
    CategoryRows(CDrillDown& analysis, const Drill& record, CListCtrl& list, char* labelField)
        : Analysis(analysis), Record(record), List(list), LabelField(labelField), Described(HasDescriptions()) {}

    void Fill();

  private:
    [[nodiscard]] bool HasDescriptions() const;
    [[nodiscard]] bool HasDescription(const Categories& category) const {
        return FindLongLabel(Analysis, Record, category, LabelField);
    }
    void AddCategory(const Categories& category);
    /// Adds a row behind the others, the first one selected.
    int AddRow(const std::string& name, double count);

    CDrillDown& Analysis;
    const Drill& Record;
    CListCtrl& List;
    char* LabelField;
    bool Described;  ///< the list has the column of descriptions
    int Rows = 0;
};

bool CategoryRows::HasDescriptions() const {
    // Intended: a continuous variable has no descriptions here, unlike in the summary, which asks for every step; the
    // shape of the list depends on it.
    return Record.VarType == CategoricalVariable &&
           std::any_of(Record.CategorySet.begin(), Record.CategorySet.end(),
                       [&](const Categories& category) { return HasDescription(category); });
}

void CategoryRows::Fill() {
    if (Described) {
        List.InsertColumn(DescriptionColumn, Analysis.GetResourceString(DescriptionText), 200);
    }
    for (const Categories& category : Record.CategorySet) {
        if (IsNonZero(category.Count)) {
            AddCategory(category);
        }
    }
    if (Analysis.CountMD == 1 && IsNonZero(Record.MissingWeight)) {
        AddRow(Analysis.GetResourceString(MissingText), Record.MissingWeight);
    }
}

void CategoryRows::AddCategory(const Categories& category) {
    const int row = AddRow(category.Name, category.Count);
    if (const std::optional<RowRange> range = RangeOf(category, Record.Method)) {
        List.SetItemRange(row, *range);
    }
    if (Described && HasDescription(category)) {
        std::string description = LabelField;
        Analysis.ExpandPossible8CharHash(description);
        Analysis.StripFormatting(description);
        List.SetItemText(row, DescriptionColumn, description.c_str());
    }
}

int CategoryRows::AddRow(const std::string& name, double count) {
    const int row = Rows++;
    List.InsertItem(row, name.c_str(), row == 0);
    List.SetItemText(row, CountColumn, ShortDecimals(count).c_str());
    return row;
}

/// Fills the list with the categories of the current variable; without memory it stays empty.
void FillList(CDrillDown& analysis, CListCtrl& list, const HostBuffer<char>& labelField) {
    const int countHeading = analysis.CaseWeight.Variable != 0 ? WeightText : CountText;
    list.InsertColumn(NameColumn, analysis.GetResourceString(CategoryText), 120);
    list.InsertColumn(CountColumn, analysis.GetResourceString(countHeading), 60);
    const Drill* record = CDrillDown::FindRecord(analysis.GetDrillDowns(), analysis.GetCurrentDrillDown());
    if (record != nullptr) {
        CategoryRows(analysis, *record, list, labelField.data()).Fill();
    }
}

}  // namespace

CategorySelectionDlg::CategorySelectionDlg(CDrillDown& analysis)
    : CDrillDownModalDialog(analysis, CategoryDialog, analysis.GetStartupWindow()),
      Analysis(&analysis),
      List(std::make_unique<CListCtrl>()) {}

std::int64_t CategorySelectionDlg::EventHandler(HWND window, unsigned message, std::uint64_t wParam,
                                                std::int64_t lParam) {
    switch (message) {
        case WindowMessage::InitDialog:
            Start(window);
            return 0;
        case WindowMessage::Notify:
            return OnList(*reinterpret_cast<const ListNotification*>(lParam));
        case WindowMessage::Command:
            return OnCommand(CommandOf(wParam));
        default:
            return ColourQueryControl(message, lParam) == CategoryVariableCaption
                       ? ColourAsResult(window, wParam, lParam)
                       : 0;
    }
}

void CategorySelectionDlg::Start(HWND window) {
    InitOpeningDialog();
    List->Attach(GetDlgItem(window, CategoryListControl));
    ShowCategories(window);
    List->SetExtendedStyle(GridLines | FullRowSelection);
    List->SetTextColor(RestingColour);
    List->SelectItem(0);
}

void CategorySelectionDlg::ShowCategories(HWND window) {
    const HostBuffer<char> labelField(*Analysis, NameFieldSize);
    if (!labelField) {
        return;
    }
    const short variable = Analysis->GetCurrentDrillDown();
    WriteVarListToCaption(window, CategoryVariableCaption, variable > 0 ? 1 : 0, &variable);
    List->SetTextColor(FillingColour);
    FillList(*Analysis, *List, labelField);
}

std::int64_t CategorySelectionDlg::OnList(const ListNotification& event) {
    if (event.Id != CategoryListControl) {
        return 0;
    }
    if (event.Code == ListEvent::ItemChanged || event.Code == ListEvent::DoubleClick) {
        CategoryRow = event.Row;
    }
    return event.Code == ListEvent::DoubleClick ? Accept() : 0;
}

std::int64_t CategorySelectionDlg::OnCommand(int command) {
    if (command == CancelCommand) {
        ExitDialog(0, 0, 0);
    }
    return command == OkCommand ? Accept() : 0;
}

std::int64_t CategorySelectionDlg::Accept() {
    if (CategoryRow < 0) {
        return 0;
    }
    Analysis->SetSelected(CategoryRow);
    ExitDialog(1, 0, 0);
    return 1;
}
