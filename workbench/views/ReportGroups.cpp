#include "workbench/views/ReportGroups.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

namespace quillara {
namespace {

/// A command whose charts show the variables of another command's tables.
struct Companions {
    int Table;
    int Chart;
};

constexpr std::array<Companions, 4> CompanionRows{{{9060, 9061}, {9060, 9119}, {9082, 9083}, {9082, 9122}}};

bool AreCompanions(const OutputEntry& table, const OutputEntry& chart) {
    return std::ranges::any_of(
        CompanionRows, [&](const Companions& row) { return row.Table == table.Command && row.Chart == chart.Command; });
}

const std::vector<std::string>& TitleLinesOf(const OutputEntry& entry) {
    return std::visit(
        [](const auto& document) -> const auto& { return document.Title; }, entry.Content);
}

/// What a title says behind a text: the name of a variable, and its long name.
std::string_view VariableIn(const OutputEntry& entry, std::string_view behind) {
    const std::vector<std::string>& lines = TitleLinesOf(entry);
    const std::string_view title = lines.empty() ? std::string_view() : std::string_view(lines.front());
    const std::size_t at = title.find(behind);
    return at == std::string_view::npos ? std::string_view() : title.substr(at + behind.size());
}

bool ShowTheSameVariable(const OutputEntry& table, const OutputEntry& chart) {
    const std::string_view variable = VariableIn(table, "Frequency table of ");
    return !variable.empty() && variable == VariableIn(chart, ": ");
}

using Places = std::map<std::size_t, std::size_t>;  ///< of charts: the entry of their table

Places TablesOfCharts(const OutputCollection& outputs, const StepResults& step) {
    Places tables;
    for (std::size_t chart = step.First; chart < step.Last; ++chart) {
        for (std::size_t table = step.First; table < step.Last; ++table) {
            const OutputEntry& counts = outputs.Entries[table];
            const OutputEntry& picture = outputs.Entries[chart];
            if (AreCompanions(counts, picture) && ShowTheSameVariable(counts, picture)) {
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
