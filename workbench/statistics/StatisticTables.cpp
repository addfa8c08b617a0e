#include "workbench/statistics/StatisticTables.h"

#include <array>
#include <cmath>
#include <functional>
#include <numeric>
#include <string_view>
#include <utility>

#include "platform/OrderedBits.h"
#include "workbench/numbers/ExactNumbers.h"
#include "workbench/numbers/NumberFormat.h"
#include "workbench/statistics/ReasonCounts.h"

namespace quillara {
namespace {

constexpr const char* QuantileDefinition = "Quartiles by linear interpolation (definition 7 of Hyndman and Fan)";
constexpr double SmallestFit = 5.0;  // expected cases below which chi-square is a poor approximation
constexpr int Digits = 4;
const std::string TotalName = "Total";

double Percent(double part, double whole) {
    return whole > 0.0 ? part / whole * 100.0 : Undefined;
}

std::string Written(double number) {
    return NumberFormat({number}, Digits).TextOf(number);
}

struct DistributionColumn {
    std::string_view Name;
    double (*Of)(const Distribution& found);
    bool IsWhole;
    bool IsValue;  ///< of the variable, as its mean is one: a date, where its values are dates
};

// clang-format off
constexpr std::array<DistributionColumn, 10> DistributionColumns{{
    // Name             Of                                                                       IsWhole IsValue
    {"Valid\nN",        [](const Distribution& f) { return static_cast<double>(f.Cases); },      true,  false},
    {"Mean",            [](const Distribution& f) { return f.Mean; },                            false, true},
    {DeviationName,     [](const Distribution& f) { return f.StandardDeviation; },               false, false},
    {"Minimum",         [](const Distribution& f) { return f.Minimum; },                         false, true},
    {"Lower\nquartile", [](const Distribution& f) { return f.LowerQuartile; },                   false, true},
    {"Median",          [](const Distribution& f) { return f.Median; },                          false, true},
    {"Upper\nquartile", [](const Distribution& f) { return f.UpperQuartile; },                   false, true},
    {"Maximum",         [](const Distribution& f) { return f.Maximum; },                         false, true},
    {"Skewness",        [](const Distribution& f) { return f.Skewness; },                        false, false},
    {"Missing",         [](const Distribution& f) { return static_cast<double>(f.Missing); },    true,  false},
}};
// clang-format on

/// Weighted counts stand behind the numbers of cases where a weight is in force.
std::vector<SpreadsheetColumn> CountColumns(const std::string& weight) {
    std::vector<SpreadsheetColumn> columns{{"Count", true}};
    if (!weight.empty()) {
        columns.push_back({"Weighted\ncount", false});
    }
    return columns;
}

/// The counts of one side of a cross table's cells, and what they are percents of.
struct CrossMeasure {
    const char* Title;
    const char* Statistic;
    bool IsNamed;  ///< behind the names of the columns; counts need no name
    double (*Of)(const CrossTable& cross, std::size_t row, std::size_t column);
    double (*OfRow)(const CrossTable& cross, std::size_t row);
    double (*OfColumn)(const CrossTable& cross, std::size_t column);
    double (*OfAll)(const CrossTable& cross);
};

// clang-format off
constexpr std::array<CrossMeasure, 5> CrossMeasures{{
    {"counts", "Count", false,
     [](const CrossTable& c, std::size_t row, std::size_t column) { return c.CountAt(row, column); },
     [](const CrossTable& c, std::size_t row) { return c.Rows.Totals[row]; },
     [](const CrossTable& c, std::size_t column) { return c.Columns.Totals[column]; },
     [](const CrossTable& c) { return c.Total; }},
    {"row percents", "Percent of row", true,
     [](const CrossTable& c, std::size_t row, std::size_t column) { return Percent(c.CountAt(row, column), c.Rows.Totals[row]); },
     [](const CrossTable& /*c*/, std::size_t /*row*/) { return 100.0; },
     [](const CrossTable& c, std::size_t column) { return Percent(c.Columns.Totals[column], c.Total); },
     [](const CrossTable& c) { return Percent(c.Total, c.Total); }},
    {"column percents", "Percent of column", true,
     [](const CrossTable& c, std::size_t row, std::size_t column) { return Percent(c.CountAt(row, column), c.Columns.Totals[column]); },
     [](const CrossTable& c, std::size_t row) { return Percent(c.Rows.Totals[row], c.Total); },
     [](const CrossTable& /*c*/, std::size_t /*column*/) { return 100.0; },
     [](const CrossTable& c) { return Percent(c.Total, c.Total); }},
    {"total percents", "Percent of all", true,
     [](const CrossTable& c, std::size_t row, std::size_t column) { return Percent(c.CountAt(row, column), c.Total); },
     [](const CrossTable& c, std::size_t row) { return Percent(c.Rows.Totals[row], c.Total); },
     [](const CrossTable& c, std::size_t column) { return Percent(c.Columns.Totals[column], c.Total); },
     [](const CrossTable& c) { return Percent(c.Total, c.Total); }},
    {"expected counts", "Expected", true,
     [](const CrossTable& c, std::size_t row, std::size_t column) { return c.ExpectedAt(row, column); },
     [](const CrossTable& c, std::size_t row) { return c.Rows.Totals[row]; },
     [](const CrossTable& c, std::size_t column) { return c.Columns.Totals[column]; },
     [](const CrossTable& c) { return c.Total; }},
}};
// clang-format on

/// Counts are whole unless they are sums of fractional weights.
void MarkWholeColumns(SpreadsheetDocument& table) {
    for (std::size_t column = 0; column < table.Columns.size(); ++column) {
        bool isWhole = true;
        for (const SpreadsheetRow& row : table.Rows) {
            const auto* number = std::get_if<double>(&row.Cells[column]);
            isWhole = isWhole && number != nullptr && IsExactWhole(*number);
        }
        table.Columns[column].Whole = isWhole;
    }
}

/// A category of the columns, or their totals.
SpreadsheetColumn CrossColumn(const CrossTable& cross, const CrossMeasure& measure, const std::string& category) {
    SpreadsheetColumn column;
    column.Name = category.empty() ? TotalName : category;
    column.Name += measure.IsNamed ? std::string("\n") + measure.Statistic : "";
    column.Variable = cross.Columns.Variable;
    column.Statistic = measure.Statistic;
    column.Category = category;
    column.IsCrossed = true;
    return column;
}

SpreadsheetDocument CrossDocument(const CrossTable& cross, const CrossMeasure& measure) {
    const std::size_t columns = cross.Columns.Names.size();
    SpreadsheetDocument table;
    table.Corner = cross.Rows.Variable + " by " + cross.Columns.Variable;
    for (const std::string& name : cross.Columns.Names) {
        table.Columns.push_back(CrossColumn(cross, measure, name));
    }
    table.Columns.push_back(CrossColumn(cross, measure, ""));
    for (std::size_t row = 0; row < cross.Rows.Names.size(); ++row) {
        SpreadsheetRow cells{cross.Rows.Names[row], {}};
        for (std::size_t column = 0; column < columns; ++column) {
            cells.Cells.push_back(CellOf(measure.Of(cross, row, column)));
        }
        cells.Cells.push_back(CellOf(measure.OfRow(cross, row)));
        cells.About = {cross.Rows.Variable, cells.Name};
        table.Rows.push_back(std::move(cells));
    }
    SpreadsheetRow totals{TotalName, {}};
    for (std::size_t column = 0; column < columns; ++column) {
        totals.Cells.push_back(CellOf(measure.OfColumn(cross, column)));
    }
    totals.Cells.push_back(CellOf(measure.OfAll(cross)));
    totals.About = {cross.Rows.Variable, ""};
    table.Rows.push_back(std::move(totals));
    MarkWholeColumns(table);
    return table;
}

std::string CasesText(const CrossTable& cross) {
    std::string text = CountText(cross.Cases);
    if (cross.LeftOut > 0) {
        text += "; " + std::to_string(cross.LeftOut) + " that lack a value or belong to no category are left out";
    }
    return text;
}

/// "p = 0.0321".
std::string ChanceText(double chance) {
    constexpr double least = 0.0001;
    return chance < least ? "p < 0.0001" : "p = " + Written(chance);
}

std::string ChiSquareText(const CrossTable& cross) {
    if (!std::isfinite(cross.ChiSquare)) {
        return "No chi-square: it takes two rows and two columns with cases";
    }
    std::string text = "Chi-square " + Written(cross.ChiSquare) + " with " + std::to_string(cross.Freedom) +
                       (cross.Freedom == 1 ? " degree" : " degrees") + " of freedom, " + ChanceText(cross.Chance) +
                       ", Cramer's V " + Written(cross.CramersV);
    if (cross.SmallestExpected() < SmallestFit) {
        text += "; the smallest expected count is " + Written(cross.SmallestExpected()) +
                ", too few for chi-square and p to be relied on";
    }
    return text;
}

/// What the probability means under a weight.
std::string WeightedChanceText(const CrossTable& cross) {
    return "p takes the weights for numbers of cases; where they balance a sample instead, which tells as much as " +
           Written(std::round(cross.EffectiveCases * 10.0) / 10.0) + " cases of equal weight, " +
           ChanceText(cross.EffectiveChance);
}

SpreadsheetDocument AssociationDocument(const CrossTable& cross, bool isWeighted) {
    const std::string variables = cross.Rows.Variable + " by " + cross.Columns.Variable;
    SpreadsheetDocument table;
    table.Corner = "Variables";
    table.Columns = {
        {"Cases", true}, {"Left out", true},    {"Chi-square", false},        {"Degrees of\nfreedom", true},
        {"p", false},    {"Cramer's V", false}, {"Smallest\nexpected", false}};
    SpreadsheetRow row{variables,
                       {static_cast<double>(cross.Cases), static_cast<double>(cross.LeftOut), CellOf(cross.ChiSquare),
                        static_cast<double>(cross.Freedom), CellOf(cross.Chance), CellOf(cross.CramersV),
                        CellOf(cross.SmallestExpected())}};
    if (isWeighted) {
        table.Columns.push_back({"Effective\ncases", false});
        table.Columns.push_back({"p of\nthese", false});
        row.Cells.push_back(CellOf(cross.EffectiveCases));
        row.Cells.push_back(CellOf(cross.EffectiveChance));
    }
    row.About = {variables, ""};
    table.Rows.push_back(std::move(row));
    return table;
}

std::string ShareText(const SharePair& pair) {
    // Shares of the rest are differences of sums, so that none may come out as a little more.
    const auto percent = [](double share) {
        const double rounded = std::abs(std::round(share * 1000.0)) / 10.0;
        return NumberFormat({rounded}, 1).TextOf(rounded);
    };
    return pair.Name + " (" + percent(pair.InSubset) + "% against " + percent(pair.InRest) + "%)";
}

std::string ShareTexts(const std::vector<SharePair>& pairs) {
    std::string text;
    for (const SharePair& pair : pairs) {
        text += (text.empty() ? "" : "; ") + ShareText(pair);
    }
    return text;
}

/// What the texts of a contrast say, in numbers.
void StateShares(const VariableContrast& contrast, SpreadsheetDocument& table) {
    for (const std::vector<SharePair>* pairs : {&contrast.Over, &contrast.Under}) {
        for (const SharePair& pair : *pairs) {
            const RowSubject about{contrast.Variable, pair.Name};
            table.Stated.push_back({about, "Percent in subset", Percent(pair.InSubset, 1.0)});
            table.Stated.push_back({about, "Percent in rest", Percent(pair.InRest, 1.0)});
        }
    }
}

std::string RemarkOn(const VariableContrast& contrast) {
    switch (contrast.Told) {
        case Evidence::NoCases:
            return contrast.CasesInSubset == 0 ? "no valid value in the subset" : "no valid value in the rest";
        case Evidence::FewCases: {
            const bool isSubset = contrast.CasesInSubset <= contrast.CasesInRest;
            return "only " + CountText(isSubset ? contrast.CasesInSubset : contrast.CasesInRest) + " in the " +
                   (isSubset ? "subset" : "rest") + ", too few to rely on";
        }
        case Evidence::WithinChance:
            return "no more than chance gives";
        case Evidence::Clear:
            break;
    }
    return {};
}

}  // namespace

std::string CountText(std::int64_t cases) {
    return std::to_string(cases) + (cases == 1 ? " case" : " cases");
}

SpreadsheetCell CellOf(double number) {
    return std::isfinite(number) ? SpreadsheetCell(number) : SpreadsheetCell();
}

std::string WeightedBy(const std::string& weight) {
    return weight.empty() ? std::string() : " weighted by " + weight;
}

WeightUse UseOf(const std::string& weight) {
    return weight.empty() ? WeightUse::None : WeightUse::Exact;
}

std::string DeviationHeading(const std::string& weight) {
    return std::string(DeviationName) + (weight.empty() ? "" : "\nby weights");
}

SpreadsheetColumn WordsColumn(std::string name) {
    return {.Name = std::move(name), .HoldsWords = true};
}

SpreadsheetDocument DistributionTable(const StatisticsScope& scope, const std::vector<std::size_t>& variables) {
    SpreadsheetDocument table;
    table.Title = {"Distribution of continuous variables" + WeightedBy(scope.Weights.Variable), QuantileDefinition};
    table.About.Weights = UseOf(scope.Weights.Variable);
    if (!scope.Weights.Variable.empty()) {
        table.Title.emplace_back(WeightDefinition);
    }
    table.Corner = "Variable";
    for (std::size_t column = 0; column < DistributionColumns.size(); ++column) {
        const bool isDeviation = DistributionColumns[column].Name == DeviationName;
        table.Columns.push_back(
            {isDeviation ? DeviationHeading(scope.Weights.Variable) : std::string(DistributionColumns[column].Name),
             DistributionColumns[column].IsWhole});
        if (DistributionColumns[column].IsValue) {
            table.About.ValueColumns.push_back(column);
        }
    }
    for (const std::size_t index : variables) {
        const Variable& variable = scope.Table.Variables[index];
        const Distribution found = DistributionOf(variable, scope.Rows, scope.Weights);
        SpreadsheetRow row{variable.Name, {}};
        for (const DistributionColumn& column : DistributionColumns) {
            row.Cells.push_back(CellOf(column.Of(found)));
        }
        table.Rows.push_back(std::move(row));
        table.About.Variables.push_back(
            {static_cast<int>(index) + 1, variable.Name, variable.LongName, variable.Kind, {}});
    }
    return table;
}

namespace {

/// The weights of the groups of a variable, and behind them that of the cases without one; and their cases.
struct GroupCounts {
    std::vector<double> Weights;
    std::vector<double> Cases;

    void Add(std::size_t group, double weight) {
        Weights[group] += weight;
        Cases[group] += 1.0;
    }
};

GroupCounts CountGroups(const StatisticsScope& scope, const ValueGroups& groups) {
    const std::size_t last = groups.Names().size();
    GroupCounts counts{std::vector<double>(last + 1), std::vector<double>(last + 1)};
    scope.Rows.ForEach([&](std::size_t row) {
        const double weight = scope.Weights.Values.empty() ? 1.0 : scope.Weights.Values[row];
        if (IsPositiveWeight(weight) && std::isfinite(weight)) {
            const std::int32_t group = groups.GroupAt(row);
            counts.Add(group == ValueGroups::NoGroup ? last : static_cast<std::size_t>(group), weight);
        }
    });
    return counts;
}

}  // namespace

SpreadsheetDocument ShareTable(const StatisticsScope& scope, std::size_t variable) {
    const Variable& shown = scope.Table.Variables[variable];
    const ValueGroups groups(shown, scope.Rows, Cut{});
    const GroupCounts counts = CountGroups(scope, groups);
    const double all = std::accumulate(counts.Weights.begin(), counts.Weights.end(), 0.0);
    SpreadsheetDocument table;
    table.Title = {"Distribution of " + shown.Name + WeightedBy(scope.Weights.Variable)};
    table.About.Weights = UseOf(scope.Weights.Variable);
    table.Corner = shown.Name;
    table.Columns = CountColumns(scope.Weights.Variable);
    table.Columns.push_back({"Percent", false});
    table.Columns.push_back({"Percent\nof valid", false});
    for (std::size_t group = 0; group < counts.Cases.size(); ++group) {
        const bool isMissing = group == groups.Names().size();
        if (counts.Cases[group] == 0.0) {
            continue;
        }
        SpreadsheetRow row{isMissing ? "Missing" : groups.Names()[group], {counts.Cases[group]}, isMissing};
        if (!scope.Weights.Variable.empty()) {
            row.Cells.emplace_back(counts.Weights[group]);
        }
        row.Cells.push_back(CellOf(Percent(counts.Weights[group], all)));
        row.About = {shown.Name, row.Name};
        row.Cells.push_back(isMissing ? SpreadsheetCell()
                                      : CellOf(Percent(counts.Weights[group], all - counts.Weights.back())));
        table.Rows.push_back(std::move(row));
    }
    table.Missing = CountReasons(shown, scope.Rows, scope.Weights, WeightCounting::AsTheyAre);
    return table;
}

std::vector<SpreadsheetDocument> TablesOfCross(const CrossTable& cross, const std::string& weight) {
    std::vector<SpreadsheetDocument> tables;
    for (const CrossMeasure& measure : CrossMeasures) {
        SpreadsheetDocument& table = tables.emplace_back(CrossDocument(cross, measure));
        table.Title = {"Cross table of " + cross.Rows.Variable + " by " + cross.Columns.Variable + ": " +
                       measure.Title + WeightedBy(weight)};
        table.About.Aspect = measure.Title;
        if (tables.size() == 1) {
            table.Title.push_back(CasesText(cross));
            table.Title.push_back(ChiSquareText(cross));
            if (!weight.empty() && std::isfinite(cross.Chance)) {
                table.Title.push_back(WeightedChanceText(cross));
            }
        }
    }
    tables.push_back(AssociationDocument(cross, !weight.empty()));
    tables.back().Title = {"Cross table of " + cross.Rows.Variable + " by " + cross.Columns.Variable + ": association" +
                           WeightedBy(weight)};
    tables.back().About.Aspect = "association";
    for (SpreadsheetDocument& table : tables) {
        table.About.By = {cross.Rows.Variable, cross.Columns.Variable};
        table.About.Weights = UseOf(weight);
    }
    return tables;
}

GraphDocument MosaicOf(const CrossTable& cross, const std::string& weight) {
    GraphDocument graph;
    graph.Title = {"Mosaic of " + cross.Rows.Variable + " by " + cross.Columns.Variable + WeightedBy(weight),
                   CasesText(cross)};
    graph.About.By = {cross.Rows.Variable, cross.Columns.Variable};
    graph.About.Weights = UseOf(weight);
    graph.Content = MosaicPlot{{cross.Rows.Variable, cross.Rows.LongName, cross.Rows.Names},
                               {cross.Columns.Variable, cross.Columns.LongName, cross.Columns.Names},
                               cross.Counts,
                               (cross.LeftOut > 0 ? CasesText(cross) + ". " : "") + ChiSquareText(cross)};
    return graph;
}

SpreadsheetDocument ContrastTable(const std::vector<VariableContrast>& contrasts, const std::string& weight) {
    SpreadsheetDocument table;
    table.Title = {
        "What differs between the subset and the rest" + WeightedBy(weight),
        "Distance from 0, alike, to 1, nothing in common: total variation of categories, Kolmogorov-Smirnov of "
        "numbers"};
    table.About.Weights = UseOf(weight);
    table.Corner = "Variable";
    table.Columns = {{"Distance", false},    {"Cramer's V", false},  {"Standardised\ndifference", false},
                     WordsColumn("More of"), WordsColumn("Less of"), {"N in\nsubset", true},
                     {"N in\nrest", true},   WordsColumn("Remark")};
    for (const VariableContrast& contrast : contrasts) {
        const bool hasCases = contrast.Told != Evidence::NoCases;
        table.Rows.push_back(
            {contrast.Variable,
             {hasCases ? CellOf(contrast.Distance) : SpreadsheetCell(),
              hasCases ? CellOf(contrast.CramersV) : SpreadsheetCell(),
              hasCases ? CellOf(contrast.Difference) : SpreadsheetCell(), hasCases ? ShareTexts(contrast.Over) : "",
              hasCases ? ShareTexts(contrast.Under) : "", static_cast<double>(contrast.CasesInSubset),
              static_cast<double>(contrast.CasesInRest), RemarkOn(contrast)}});
        table.Rows.back().About = {contrast.Variable, ""};
        StateShares(contrast, table);
    }
    return table;
}

}  // namespace quillara
