#include "workbench/command/SubsetColumns.h"

#include <algorithm>

#include "workbench/data/Errors.h"
#include "workbench/data/VariableIndex.h"

namespace quillara {
namespace {

const Variable& VariableAt(const DataTable& table, short number) {
    return table.Variables[static_cast<std::size_t>(number) - 1];
}

std::vector<short> NamedColumns(const DataTable& table, const SavedVariables& named) {
    std::vector<short> columns;
    for (std::size_t index = 0; named.AreAll && index < table.Variables.size(); ++index) {
        columns.push_back(static_cast<short>(index + 1));
    }
    const VariableIndex variables(table);
    for (const std::string& name : named.Names) {
        columns.push_back(static_cast<short>(variables.IndexOf(name) + 1));
    }
    return columns;
}

std::vector<short> ColumnsOf(const VariableChoice& drill) {
    std::vector<short> columns;
    for (const VariableLists* lists : {&drill.Drill, &drill.Review}) {
        columns.insert(columns.end(), lists->Categorical.begin(), lists->Categorical.end());
        columns.insert(columns.end(), lists->Continuous.begin(), lists->Continuous.end());
    }
    std::ranges::sort(columns);
    columns.erase(std::unique(columns.begin(), columns.end()), columns.end());
    return columns;
}

}  // namespace

SavedVariables ParseSavedVariables(std::string_view text) {
    SavedVariables saved{ParseNames(text), text == "all"};
    if (saved.Names.empty()) {
        throw UsageError("No variable is named; write all for all of them.");
    }
    CheckForRepeats({.Categorical = saved.Names, .Continuous = {}, .ReviewCategorical = {}, .ReviewContinuous = {}});
    if (saved.AreAll) {
        saved.Names.clear();
    }
    return saved;
}

std::vector<short> SubsetColumns(const DataTable& table, const std::optional<SavedVariables>& named,
                                 const VariableChoice& drill, std::optional<std::size_t> weight) {
    std::vector<short> columns = named ? NamedColumns(table, *named) : ColumnsOf(drill);
    const auto weightColumn = static_cast<short>(weight.value_or(0) + 1);
    if (weight && std::ranges::find(columns, weightColumn) == columns.end()) {
        columns.push_back(weightColumn);
    }
    if (!named) {
        std::ranges::sort(columns);
    }
    return columns;
}

std::shared_ptr<const DataTable> Arranged(std::shared_ptr<const DataTable> subset, const DataTable& table,
                                          const std::vector<short>& columns, std::optional<std::size_t> weight) {
    const std::optional<std::size_t> declared = weight ? weight : table.Weight;
    const VariableIndex variables(*subset);
    std::vector<std::size_t> places;
    std::optional<std::size_t> weightPlace;
    for (const short column : columns) {
        if (declared == static_cast<std::size_t>(column) - 1) {
            weightPlace = places.size();
        }
        places.push_back(variables.IndexOf(VariableAt(table, column).Name));
    }
    const bool isWhole = places.size() == subset->Variables.size() && std::ranges::is_sorted(places);
    if (isWhole && weightPlace == subset->Weight) {
        return subset;
    }
    auto arranged = std::make_shared<DataTable>();
    arranged->FileName = subset->FileName;
    arranged->Header = subset->Header;
    arranged->Cases = subset->Cases;
    arranged->CaseNames = subset->CaseNames;
    arranged->Weight = weightPlace;
    for (const std::size_t place : places) {
        arranged->Variables.push_back(subset->Variables[place]);
    }
    return arranged;
}

}  // namespace quillara
