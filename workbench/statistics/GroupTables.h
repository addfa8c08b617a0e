#pragma once

#include <string>
#include <vector>

#include "workbench/documents/SpreadsheetDocument.h"
#include "workbench/statistics/StatisticTables.h"

namespace quillara {

/// Groups of cases side by side: tables with a row for each group, which are added one after the other.
class GroupTables {
  public:
    /// `by` are the names of the variables whose categories make the groups. Percents are those of the cases of
    /// `whole`. Table and weights outlive the tables.
    GroupTables(std::vector<std::string> by, ComparedVariables variables, const StatisticsScope& whole);

    /// Adds the group of a category of each of these variables; its rows are looked at now and not kept.
    void Add(std::vector<std::string> categories, const RowSet& rows);

    /// A table of the continuous variables side by side: sum, mean, deviation, median and quartiles; then one of the
    /// categorical ones: the percents of their categories among the valid cases of each group. Without variables the
    /// groups alone.
    [[nodiscard]] std::vector<SpreadsheetDocument> Documents() const;

  private:
    struct Group {
        std::vector<std::string> Categories;
        CountedCases Counted;
        std::vector<Distribution> Distributions;  ///< of the continuous variables
        std::vector<std::vector<double>> Percents;  ///< of the categorical ones, category by category
        std::vector<double> Valid;  ///< of the categorical ones: cases
    };

    [[nodiscard]] SpreadsheetDocument Begun(const std::string& title, const std::vector<std::size_t>& variables) const;
    [[nodiscard]] SpreadsheetRow RowOf(const Group& group) const;
    [[nodiscard]] SpreadsheetDocument NumberTable() const;
    [[nodiscard]] SpreadsheetDocument PercentTable() const;
    [[nodiscard]] std::vector<SpreadsheetColumn> NumberColumns(std::size_t place) const;
    [[nodiscard]] std::vector<SpreadsheetColumn> PercentColumns(std::size_t place) const;
    [[nodiscard]] std::string TitleOf(const std::vector<std::size_t>& variables, const std::string& several) const;

    const std::vector<std::string> By;
    const ComparedVariables Variables;
    const DataTable& Table;
    const CaseWeights& Weights;
    const CountedCases Whole;
    std::vector<ValueGroups> Categories;  // of the categorical variables
    std::vector<Group> Groups;
};

}  // namespace quillara
