#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/CaseBlocks.h"
#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"

namespace quillara {

/// Whether a text names totals: "Total", "Summe:", ...
[[nodiscard]] bool IsWordOfTotals(std::string_view text);

/// What of a table that was just read may be no case but what a sheet has beside its cases: totals of others, notes
/// below them, rows of nothing at the end, the line of names once more. Each remark names such a case. `names` stand
/// in the file; none where it has none.
[[nodiscard]] std::vector<Remark> RemarksOnOddCases(const DataTable& table, const std::vector<std::string>& names);

/// The variables that would be numbers or dates but for the first case: a second line of names, or of units, does that.
/// None where that case has a number or a date too, or where it is but one variable of a case without a gap.
[[nodiscard]] std::vector<std::string> SpoiledByFirstCase(const DataTable& table);
/// Remarks on these, if there are any. `throughNames` is how many lines there are down to the names, 0 where they
/// aren't in a line.
[[nodiscard]] std::vector<Remark> RemarksOnSecondNames(const DataTable& table, const std::vector<std::string>& spoiled,
                                                       std::size_t throughNames);

/// Takes out the remarks on cases that a selection leaves out; an empty one leaves out none.
void DropObeyed(std::vector<Remark>& remarks, const std::vector<CaseResult>& selection);

}  // namespace quillara
