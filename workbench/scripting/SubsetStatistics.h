#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "workbench/data/RowSet.h"
#include "workbench/scripting/CategorizationOption.h"
#include "workbench/statistics/GroupTables.h"
#include "workbench/statistics/GroupedBoxes.h"

namespace quillara {

class AnalysisDocument;

/// A categorization as statistics take it.
[[nodiscard]] Cut CutBy(const Categorization& how);

/// What the host itself says of the cases that remain in an analysis: the cases as the filter of the analysis leaves
/// them now, its weight, and the variables chosen there. It is of no use once the table is another.
class SubsetStatistics {
  public:
    /// Throws DataError when the analysis doesn't tell its steps.
    explicit SubsetStatistics(AnalysisDocument& document);
    SubsetStatistics(const SubsetStatistics&) = delete;
    SubsetStatistics& operator=(const SubsetStatistics&) = delete;

    /// Open and review variables, each once, in their order.
    [[nodiscard]] const ComparedVariables& Open() const { return Variables; }
    [[nodiscard]] const RowSet& Subset() const { return Remaining; }
    [[nodiscard]] CountedCases Counted() const { return CountCases(Remaining, Weights); }
    /// The table of the continuous ones, then one for each categorical one.
    [[nodiscard]] std::vector<SpreadsheetDocument> Distributions() const;
    /// The table of the continuous ones alone, or of a categorical one; nothing where it isn't open.
    [[nodiscard]] std::optional<SpreadsheetDocument> DistributionOf(std::optional<std::size_t> variable) const;
    /// The table of the variables, of which there is at least one; nothing where the steps drop no case.
    [[nodiscard]] std::optional<SpreadsheetDocument> WhatDiffers() const;
    /// Throws as CrossTableOf.
    [[nodiscard]] CrossTable CrossOf(const CrossVariable& rows, const CrossVariable& columns) const;
    /// Throws as BoxesByGroup.
    [[nodiscard]] GraphDocument BoxesBy(std::size_t variable, const CrossVariable& by,
                                        BoxType type = BoxType::MedianQuartilesRange) const;
    /// Tables of groups by these variables, of those that are open beside them. They must not outlive this.
    [[nodiscard]] GroupTables GroupsBy(const std::vector<std::string>& names) const;
    /// Name of the variable that weights the cases; empty: none does.
    [[nodiscard]] const std::string& Weight() const { return Weights.Variable; }

  private:
    [[nodiscard]] StatisticsScope Scope() const { return {Table, Remaining, Weights}; }

    AnalysisDocument& Document;
    const DataTable& Table;
    RowSet Remaining;
    CaseWeights Weights;
    ComparedVariables Variables;
};

}  // namespace quillara
