#include "workbench/views/TidyTable.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "workbench/views/CsvText.h"
#include "workbench/views/DocumentViews.h"
#include "workbench/views/GraphTables.h"
#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

constexpr std::string_view NoValue = "-";  // stands where a statistic has no value
constexpr std::array<std::string_view, 7> Header{"step",     "cases",     "result", "variable",
                                                 "category", "statistic", "value"};

const Subject& SubjectOf(const OutputEntry& entry) {
    return std::visit([](const auto& content) -> const Subject& { return content.About; }, entry.Content);
}

std::optional<std::int32_t> CasesAt(const OutputCollection& outputs, int step) {
    const auto place = static_cast<std::size_t>(step);
    const bool isKnown = place <= outputs.Steps.size();
    const std::optional<SubsetSize> size = place == 0 ? outputs.Selected
                                           : isKnown  ? outputs.Steps[place - 1].Left
                                                      : std::nullopt;
    return size ? std::optional(size->Cases) : std::nullopt;
}

/// A table has a row for each category of its variable, or for each of its variables.
RowSubject SubjectOfRow(const SpreadsheetDocument& table, std::size_t place) {
    const SpreadsheetRow& row = table.Rows[place];
    if (row.About) {
        return *row.About;
    }
    const std::vector<ShownVariable>& variables = table.About.Variables;
    const bool hasRowPerVariable = !table.About.ValueColumns.empty() || variables.size() > 1;
    if (!hasRowPerVariable) {
        return {variables.empty() ? "" : variables.front().Name, row.NameForPeople()};
    }
    return {variables.size() == table.Rows.size() ? variables[place].Name : row.Name};
}

/// What the number of a column is about, in a row about something: of two variables both, one by the other. The totals
/// of one that crosses another are about that other alone.
RowSubject SubjectOf(RowSubject row, const SpreadsheetColumn& column) {
    if (column.Variable.empty()) {
        return row;
    }
    const RowSubject across{column.Variable, column.Category};
    if (column.IsCrossed && row.Category.empty() != across.Category.empty()) {
        return row.Category.empty() ? across : row;
    }
    const RowSubject& first = column.IsCrossed ? row : across;
    const RowSubject& second = column.IsCrossed ? across : row;
    const std::string by = first.Category.empty() || second.Category.empty() ? "" : " by ";
    return {first.Variable + " by " + second.Variable, first.Category + by + second.Category};
}

SpreadsheetCell ValueOf(const SpreadsheetCell& cell) {
    const auto* text = std::get_if<std::string>(&cell);
    return text != nullptr && *text == NoValue ? SpreadsheetCell() : cell;
}

/// Gathers the rows of one document after the other.
class TidyRowsOf {
  public:
    TidyRowsOf(const OutputCollection& outputs, const OutputEntry& entry, std::vector<TidyRow>& rows)
        : Entry(entry), Cases(CasesAt(outputs, entry.Step)), Weights(SubjectOf(entry).WeightWord()), Rows(rows) {}

    void Add() {
        if (Entry.Result == "summary") {
            AddSteps(std::get<SpreadsheetDocument>(Entry.Content));
        } else if (const auto* graph = std::get_if<GraphDocument>(&Entry.Content)) {
            AddGraph(*graph);
        } else {
            AddTable(std::get<SpreadsheetDocument>(Entry.Content));
        }
    }

  private:
    void Add(RowSubject about, std::string_view statistic, SpreadsheetCell value) {
        Rows.push_back({Entry.Step, Cases, Entry.Result, std::move(about.Variable), std::move(about.Category),
                        ShownLine(statistic), std::string(Weights), std::move(value)});
    }

    /// The newest stands on top.
    void AddSteps(const SpreadsheetDocument& summary) {
        for (std::size_t i = 0; i < summary.Rows.size(); ++i) {
            const SpreadsheetRow& step = summary.Rows[i];
            const std::string* category = step.Cells.empty() ? nullptr : std::get_if<std::string>(&step.Cells.front());
            Add({step.Name, category == nullptr ? "" : *category}, "Step",
                static_cast<double>(summary.Rows.size() - i));
        }
    }

    void AddGraph(const GraphDocument& graph) {
        const bool hasLayers = std::holds_alternative<StackedPlot>(graph.Content);
        for (const SpreadsheetDocument& table : ExactTablesOf(graph)) {
            AddTable(table, hasLayers ? 1 : 0);
        }
    }

    void AddTable(const SpreadsheetDocument& table, std::size_t firstColumn = 0) {
        for (std::size_t row = 0; row < table.Rows.size(); ++row) {
            const RowSubject about = SubjectOfRow(table, row);
            const std::vector<SpreadsheetCell>& cells = table.Rows[row].Cells;
            for (std::size_t column = firstColumn; column < cells.size() && column < table.Columns.size(); ++column) {
                const SpreadsheetColumn& shown = table.Columns[column];
                if (!shown.HoldsWords) {
                    Add(SubjectOf(about, shown), shown.Variable.empty() ? shown.Name : shown.Statistic,
                        ValueOf(cells[column]));
                }
            }
        }
        for (const StatedNumber& stated : table.Stated) {
            Add(stated.About, stated.Statistic, stated.Value);
        }
    }

    const OutputEntry& Entry;
    std::optional<std::int32_t> Cases;
    std::string_view Weights;
    std::vector<TidyRow>& Rows;
};

/// The columns; that of the weights only where one is in force.
CsvRecord HeaderOf(bool hasWeights) {
    CsvRecord header{Header.begin(), Header.end()};
    if (hasWeights) {
        header.emplace_back("weights");
    }
    return header;
}

CsvRecord RecordOf(const TidyRow& row, bool hasWeights) {
    CsvRecord record{std::to_string(row.Step),
                     row.Cases ? std::to_string(*row.Cases) : "",
                     UnsteeringText(row.Result),
                     UnsteeringText(row.Variable),
                     UnsteeringText(row.Category),
                     UnsteeringText(row.Statistic),
                     CsvCell(row.Value)};
    if (hasWeights) {
        record.push_back(row.Weights);
    }
    return record;
}

bool HasWeights(const OutputCollection& run) {
    return std::ranges::any_of(run.Entries,
                               [](const OutputEntry& entry) { return !SubjectOf(entry).WeightWord().empty(); });
}

/// A record of a run; `run` in front of it unless it is the only one.
std::string Line(const std::string& run, CsvRecord record) {
    if (!run.empty()) {
        record.insert(record.begin(), run);
    }
    return CsvText(record);
}

}  // namespace

std::vector<TidyRow> TidyRows(const OutputCollection& outputs) {
    std::vector<TidyRow> rows;
    for (const OutputEntry& entry : outputs.Entries) {
        TidyRowsOf(outputs, entry, rows).Add();
    }
    return rows;
}

std::string CsvView(std::span<const OutputCollection> runs) {
    const bool isOne = runs.size() == 1;
    const bool hasWeights = std::ranges::any_of(runs, HasWeights);
    std::string text = Line(isOne ? "" : "analysis", HeaderOf(hasWeights));
    for (std::size_t i = 0; i < runs.size(); ++i) {
        for (const TidyRow& row : TidyRows(runs[i])) {
            text += Line(isOne ? "" : std::to_string(i + 1), RecordOf(row, hasWeights));
        }
    }
    return text;
}

std::string CsvView(const OutputCollection& outputs) {
    return CsvView(std::span(&outputs, 1));
}

}  // namespace quillara
