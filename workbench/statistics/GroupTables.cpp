#include "workbench/statistics/GroupTables.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "platform/OrderedBits.h"

namespace quillara {
namespace {

/// The counts of a variable's categories in some rows.
struct CategoryCounts {
    std::vector<double> Weights;
    double Total = 0.0;
    double Cases = 0.0;
};

CategoryCounts CountCategories(const ValueGroups& categories, const RowSet& rows, const CaseWeights& weights) {
    CategoryCounts counts{std::vector<double>(categories.Names().size())};
    rows.ForEach([&](std::size_t row) {
        const double weight = weights.Values.empty() ? 1.0 : weights.Values[row];
        const std::int32_t category = categories.GroupAt(row);
        if (category != ValueGroups::NoGroup && IsPositiveWeight(weight) && std::isfinite(weight)) {
            counts.Weights[static_cast<std::size_t>(category)] += weight;
            counts.Total += weight;
            counts.Cases += 1.0;
        }
    });
    return counts;
}

/// Days and times of day don't add up.
bool HasSums(const Variable& variable) {
    return variable.Kind == ValueKind::Number;
}

/// "cut by color".
std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : " by ") + name;
    }
    return text;
}

/// The columns of one variable behind the others, under its name where there are several.
void Append(std::vector<SpreadsheetColumn> columns, bool areNamed, SpreadsheetDocument& table) {
    for (SpreadsheetColumn& column : columns) {
        if (areNamed) {
            column.Name = column.Variable + '\n' + column.Name;
        }
        table.Columns.push_back(std::move(column));
    }
}

}  // namespace

GroupTables::GroupTables(std::vector<std::string> by, ComparedVariables variables, const StatisticsScope& whole)
    : By(std::move(by)),
      Variables(std::move(variables)),
      Table(whole.Table),
      Weights(whole.Weights),
      Whole(CountCases(whole.Rows, whole.Weights)) {
    for (const std::size_t variable : Variables.Categorical) {
        Categories.emplace_back(Table.Variables[variable], whole.Rows, Cut{});
    }
}

void GroupTables::Add(std::vector<std::string> categories, const RowSet& rows) {
    Group& group = Groups.emplace_back(Group{std::move(categories), CountCases(rows, Weights), {}, {}, {}});
    for (const std::size_t variable : Variables.Continuous) {
        group.Distributions.push_back(DistributionOf(Table.Variables[variable], rows, Weights));
    }
    for (const ValueGroups& shown : Categories) {
        CategoryCounts counts = CountCategories(shown, rows, Weights);
        for (double& weight : counts.Weights) {
            weight = counts.Total > 0.0 ? weight / counts.Total * 100.0 : Undefined;
        }
        group.Percents.push_back(std::move(counts.Weights));
        group.Valid.push_back(counts.Cases);
    }
}

/// The first variable names the rows, the others have a column each.
SpreadsheetDocument GroupTables::Begun(const std::string& title, const std::vector<std::size_t>& variables) const {
    SpreadsheetDocument table;
    table.Title = {title + WeightedBy(Weights.Variable)};
    table.Corner = By.front();
    for (std::size_t i = 1; i < By.size(); ++i) {
        table.Columns.push_back(WordsColumn(By[i]));
    }
    table.Columns.push_back({"N", true});
    if (!Weights.Variable.empty()) {
        table.Columns.push_back({"Weighted\nN", false});
    }
    table.Columns.push_back({"Percent", false});
    table.About.By = By;
    table.About.Weights = UseOf(Weights.Variable);
    if (variables.size() == 1) {
        const Variable& shown = Table.Variables[variables.front()];
        table.About.Variables = {{static_cast<int>(variables.front()) + 1, shown.Name, shown.LongName, shown.Kind, {}}};
    }
    return table;
}

SpreadsheetRow GroupTables::RowOf(const Group& group) const {
    SpreadsheetRow row{group.Categories.front(), {group.Categories.begin() + 1, group.Categories.end()}};
    row.Cells.emplace_back(static_cast<double>(group.Counted.Cases));
    if (!Weights.Variable.empty()) {
        row.Cells.emplace_back(group.Counted.Weight);
    }
    row.Cells.push_back(CellOf(group.Counted.Weight / Whole.Weight * 100.0));
    row.About = {Joined(By), Joined(group.Categories)};
    return row;
}

/// Of one variable by its name.
std::string GroupTables::TitleOf(const std::vector<std::size_t>& variables, const std::string& several) const {
    return (variables.size() == 1 ? Table.Variables[variables.front()].Name : several) + " by " + Joined(By);
}

std::vector<SpreadsheetColumn> GroupTables::NumberColumns(std::size_t place) const {
    const Variable& variable = Table.Variables[Variables.Continuous[place]];
    const auto column = [&variable](std::string statistic, ValueKind kind) {
        return SpreadsheetColumn{statistic, false, variable.Name, statistic, kind};
    };
    std::vector<SpreadsheetColumn> columns{column("Valid\nN", ValueKind::Number)};
    columns.front().Whole = true;
    if (HasSums(variable)) {
        columns.push_back(column("Sum", ValueKind::Number));
    }
    columns.push_back(column("Mean", variable.Kind));
    columns.push_back(column(DeviationHeading(Weights.Variable), ValueKind::Number));
    for (const char* quartile : {"Lower\nquartile", "Median", "Upper\nquartile"}) {
        columns.push_back(column(quartile, variable.Kind));
    }
    return columns;
}

std::vector<SpreadsheetColumn> GroupTables::PercentColumns(std::size_t place) const {
    const std::string& variable = Table.Variables[Variables.Categorical[place]].Name;
    std::vector<SpreadsheetColumn> columns{{"Valid\nN", true, variable, "Valid\nN"}};
    for (const std::string& name : Categories[place].Names()) {
        columns.push_back({.Name = name + "\nPercent", .Variable = variable, .Statistic = "Percent", .Category = name});
    }
    return columns;
}

SpreadsheetDocument GroupTables::NumberTable() const {
    SpreadsheetDocument table = Begun(TitleOf(Variables.Continuous, "Continuous variables"), Variables.Continuous);
    if (!Weights.Variable.empty()) {
        table.Title.emplace_back(WeightDefinition);
    }
    for (std::size_t place = 0; place < Variables.Continuous.size(); ++place) {
        Append(NumberColumns(place), Variables.Continuous.size() > 1, table);
    }
    for (const Group& group : Groups) {
        SpreadsheetRow row = RowOf(group);
        for (std::size_t place = 0; place < group.Distributions.size(); ++place) {
            const Distribution& found = group.Distributions[place];
            row.Cells.emplace_back(static_cast<double>(found.Cases));
            if (HasSums(Table.Variables[Variables.Continuous[place]])) {
                row.Cells.push_back(CellOf(found.Sum));
            }
            for (const double number :
                 {found.Mean, found.StandardDeviation, found.LowerQuartile, found.Median, found.UpperQuartile}) {
                row.Cells.push_back(CellOf(number));
            }
        }
        table.Rows.push_back(std::move(row));
    }
    return table;
}

SpreadsheetDocument GroupTables::PercentTable() const {
    SpreadsheetDocument table =
        Begun(TitleOf(Variables.Categorical, "Categorical variables") + ": row percents", Variables.Categorical);
    for (std::size_t place = 0; place < Variables.Categorical.size(); ++place) {
        Append(PercentColumns(place), Variables.Categorical.size() > 1, table);
    }
    for (const Group& group : Groups) {
        SpreadsheetRow row = RowOf(group);
        for (std::size_t place = 0; place < group.Percents.size(); ++place) {
            row.Cells.emplace_back(group.Valid[place]);
            std::ranges::transform(group.Percents[place], std::back_inserter(row.Cells), CellOf);
        }
        table.Rows.push_back(std::move(row));
    }
    return table;
}

std::vector<SpreadsheetDocument> GroupTables::Documents() const {
    std::vector<SpreadsheetDocument> documents;
    if (!Variables.Continuous.empty()) {
        documents.push_back(NumberTable());
    }
    if (!Variables.Categorical.empty()) {
        documents.push_back(PercentTable());
    }
    if (documents.empty()) {
        SpreadsheetDocument& groups = documents.emplace_back(Begun("Categories of " + Joined(By), {}));
        for (const Group& group : Groups) {
            groups.Rows.push_back(RowOf(group));
        }
    }
    return documents;
}

}  // namespace quillara
