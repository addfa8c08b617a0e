#include "workbench/hosting/MissingNotes.h"

#include <algorithm>
#include <variant>

#include "resources/ControlIds.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/hosting/WeightsInForce.h"
#include "workbench/statistics/ReasonCounts.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

bool IsBoxChecked(AnalysisDocument& document, int control) {
    Window* startup = document.StartupWindow();
    const Control* box = startup == nullptr ? nullptr : startup->Find(control);
    return box != nullptr && box->Checked;
}

/// What the table itself counts as missing; 0 without such a row.
double MissingInTable(const SpreadsheetDocument& table) {
    const auto row = std::ranges::find_if(table.Rows, &SpreadsheetRow::IsMissing);
    const double* count =
        row == table.Rows.end() || row->Cells.empty() ? nullptr : std::get_if<double>(row->Cells.data());
    return count == nullptr ? 0.0 : *count;
}

/// A table that deletes casewise counts more cases as missing than those that lack a value of its variable.
void AddCasewise(std::vector<MissingCount>& counted, double missing) {
    constexpr double rounding = 1e-6;
    for (const MissingCount& count : counted) {
        missing -= count.Count;
    }
    if (missing > rounding) {
        counted.push_back({"", "deleted casewise", missing});
    }
}

}  // namespace

std::vector<MissingCount> MissingIn(CAnalysisDoc* document, const SpreadsheetDocument& table) {
    const ShownVariable* shown = table.About.OnlyVariable();
    const Variable* variable = shown == nullptr ? nullptr : TableOf(document).Find(shown->Number);
    if (variable == nullptr || !variable->Reasons || shown->Parts() == 0) {
        return {};
    }
    auto& analysis = static_cast<AnalysisDocument&>(*document);
    const RowSet* rows = RemainingCases(analysis);
    if (rows == nullptr) {
        return {};
    }
    const auto counting =
        IsBoxChecked(analysis, WeightedMomentsBox) ? WeightCounting::AsTheyAre : WeightCounting::RoundedToWhole;
    std::vector<MissingCount> counted = CountReasons(*variable, *rows, WeightsInForce(TableOf(document)), counting);
    const bool isReview = table.About.Side == ResultSide::Review;
    if (IsBoxChecked(analysis, isReview ? ReviewCasewiseBox : CasewiseBox)) {
        AddCasewise(counted, MissingInTable(table));
    }
    return counted;
}

}  // namespace quillara
