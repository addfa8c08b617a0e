#include "workbench/statistics/GroupTables.h"

#include <cmath>
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

/// "cut by color".
std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : " by ") + name;
    }
    return text;
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
SpreadsheetDocument GroupTables::Begun(const std::string& title) const {
    SpreadsheetDocument table;
    table.Title = {title + WeightedBy(Weights.Variable)};
    table.Corner = By.front();
    for (std::size_t i = 1; i < By.size(); ++i) {
        table.Columns.push_back({By[i], false});
    }
    table.Columns.push_back({"N", true});
    if (!Weights.Variable.empty()) {
        table.Columns.push_back({"Weighted\nN", false});
    }
    table.Columns.push_back({"Percent", false});
    return table;
}

SpreadsheetRow GroupTables::RowOf(const Group& group, const std::string& variable) const {
    SpreadsheetRow row{group.Categories.front(), {group.Categories.begin() + 1, group.Categories.end()}};
    row.Cells.emplace_back(static_cast<double>(group.Counted.Cases));
    if (!Weights.Variable.empty()) {
        row.Cells.emplace_back(group.Counted.Weight);
    }
    row.Cells.push_back(CellOf(group.Counted.Weight / Whole.Weight * 100.0));
    row.About = {variable.empty() ? Joined(By) : variable + " by " + Joined(By), Joined(group.Categories)};
    return row;
}

SpreadsheetDocument GroupTables::NumberTable(std::size_t place) const {
    const Variable& variable = Table.Variables[Variables.Continuous[place]];
    SpreadsheetDocument table = Begun(variable.Name + " by " + Joined(By));
    const std::size_t first = table.Columns.size();
    for (const char* name : {"Valid\nN", "Mean", "Std.Dev.", "Lower\nquartile", "Median", "Upper\nquartile"}) {
        table.Columns.push_back({name, false});
    }
    table.Columns[first].Whole = true;
    table.About.ValueColumns = {first + 1, first + 3, first + 4, first + 5};
    for (const Group& group : Groups) {
        const Distribution& found = group.Distributions[place];
        SpreadsheetRow row = RowOf(group, variable.Name);
        row.Cells.emplace_back(static_cast<double>(found.Cases));
        for (const double number :
             {found.Mean, found.StandardDeviation, found.LowerQuartile, found.Median, found.UpperQuartile}) {
            row.Cells.push_back(CellOf(number));
        }
        table.Rows.push_back(std::move(row));
        table.About.Variables.push_back(
            {static_cast<int>(Variables.Continuous[place]) + 1, variable.Name, variable.LongName, variable.Kind, {}});
    }
    return table;
}

SpreadsheetDocument GroupTables::PercentTable(std::size_t place) const {
    const Variable& variable = Table.Variables[Variables.Categorical[place]];
    SpreadsheetDocument table = Begun(variable.Name + " by " + Joined(By) + ": row percents");
    table.Columns.push_back({"Valid\nN", true});
    for (const std::string& name : Categories[place].Names()) {
        table.Columns.push_back({name + "\nPercent", false});
    }
    for (const Group& group : Groups) {
        SpreadsheetRow row = RowOf(group, variable.Name);
        row.Cells.emplace_back(group.Valid[place]);
        for (const double percent : group.Percents[place]) {
            row.Cells.push_back(CellOf(percent));
        }
        table.Rows.push_back(std::move(row));
    }
    return table;
}

std::vector<SpreadsheetDocument> GroupTables::Documents() const {
    std::vector<SpreadsheetDocument> documents;
    for (std::size_t place = 0; place < Variables.Continuous.size(); ++place) {
        documents.push_back(NumberTable(place));
    }
    for (std::size_t place = 0; place < Variables.Categorical.size(); ++place) {
        documents.push_back(PercentTable(place));
    }
    if (documents.empty()) {
        SpreadsheetDocument& groups = documents.emplace_back(Begun("Categories of " + Joined(By)));
        for (const Group& group : Groups) {
            groups.Rows.push_back(RowOf(group, {}));
        }
    }
    return documents;
}

}  // namespace quillara
