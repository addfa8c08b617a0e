#include "workbench/views/ReportGroups.h"

#include <map>

namespace quillara {
namespace {

const Subject& SubjectOf(const OutputEntry& entry) {
    return std::visit([](const auto& document) -> const Subject& { return document.About; }, entry.Content);
}

/// The variable whose categories a table counts; null for other documents.
const ShownVariable* CountedIn(const OutputEntry& entry) {
    const auto* table = std::get_if<SpreadsheetDocument>(&entry.Content);
    const ShownVariable* variable = SubjectOf(entry).OnlyVariable();
    return table != nullptr && variable != nullptr && variable->Parts() > 0 ? variable : nullptr;
}

/// The variable whose categories a chart shows; null for charts of several and for other documents.
const ShownVariable* ShownIn(const OutputEntry& entry) {
    const auto* chart = std::get_if<GraphDocument>(&entry.Content);
    const bool showsCounts = chart != nullptr && (std::holds_alternative<Histogram>(chart->Content) ||
                                                  std::holds_alternative<PieChart>(chart->Content));
    return showsCounts ? SubjectOf(entry).OnlyVariable() : nullptr;
}

bool AreCompanions(const OutputEntry& table, const OutputEntry& chart) {
    const ShownVariable* counted = CountedIn(table);
    const ShownVariable* shown = ShownIn(chart);
    return counted != nullptr && shown != nullptr && counted->Number == shown->Number &&
           SubjectOf(table).Side == SubjectOf(chart).Side;
}

using Places = std::map<std::size_t, std::size_t>;  ///< of charts: the entry of their table

Places TablesOfCharts(const OutputCollection& outputs, const StepResults& step) {
    Places tables;
    for (std::size_t chart = step.First; chart < step.Last; ++chart) {
        for (std::size_t table = step.First; table < step.Last; ++table) {
            if (AreCompanions(outputs.Entries[table], outputs.Entries[chart])) {
                tables.emplace(chart, table);  // the first of them
            }
        }
    }
    return tables;
}

}  // namespace

std::vector<ReportGroup> ReportGroups(const OutputCollection& outputs, const StepResults& step) {
    const Places tables = TablesOfCharts(outputs, step);
    std::vector<ReportGroup> groups;
    for (std::size_t entry = step.First; entry < step.Last; ++entry) {
        if (tables.contains(entry)) {
            continue;
        }
        groups.push_back({entry});
        for (const auto& [chart, table] : tables) {
            if (table == entry) {
                groups.back().push_back(chart);
            }
        }
    }
    return groups;
}

}  // namespace quillara
