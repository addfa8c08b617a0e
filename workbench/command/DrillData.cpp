#include "workbench/command/DrillData.h"

#include <algorithm>
#include <optional>
#include <set>

#include "workbench/command/DataReading.h"
#include "workbench/command/Interruption.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/formats/ColumnFileReader.h"
#include "workbench/formats/TablePreparation.h"
#include "workbench/scripting/SettingTexts.h"

namespace quillara {

namespace {

/// Whether a drill uses no variables but those that it names and its weight.
bool UsesNamedOnly(const DrillOptions& options) {
    return options.Names && !options.Formula && !options.SaveFile && !options.DictionaryFile &&
           options.Groups.Crosses.empty() && options.Groups.Each.empty() && options.Derived.empty() &&
           options.Valid.empty() && options.Reading.MissingValues.empty();
}

/// Checks the columns that a drill names before it uses them. A name that isn't there is told of elsewhere.
void CheckNamedColumns(DataTable& table, const DrillOptions& options) {
    std::set<std::size_t> variables;
    const auto add = [&](const std::string& name) {
        if (const std::optional<std::size_t> index = table.Find(name)) {
            variables.insert(*index);
        }
    };
    const VariableNames& names = *options.Names;
    for (const auto* list :
         {&names.Categorical, &names.Continuous, &names.ReviewCategorical, &names.ReviewContinuous}) {
        std::ranges::for_each(*list, add);
    }
    for (const CategorizedVariable& categorized : options.Categorizations) {
        add(categorized.Variable);
    }
    for (const DrillStep& step : options.Steps) {
        add(step.Variable);
    }
    if (options.Weight) {
        add(*options.Weight);
    }
    WorkMonitor monitor({}, IsInterrupted);
    CheckColumns(table, {variables.begin(), variables.end()}, options.Reading.Threads, monitor);
}

}  // namespace

DataTable OpenData(const DrillOptions& options, std::vector<Remark>& notices) {
    ReadOptions reading = options.Reading;
    reading.ChecksColumns = !UsesNamedOnly(options);
    DataTable table = ReadDataWithProgress(options.File, reading, notices);
    if (!reading.ChecksColumns) {
        CheckNamedColumns(table, options);
    }
    const std::vector<Remark> onFormulas =
        PrepareTable(table, {options.Valid, options.DictionaryFile, options.Derived}, options.Reading.MaxMemory);
    notices.insert(notices.end(), onFormulas.begin(), onFormulas.end());
    return table;
}

CaseSettings SettingsFor(const DataTable& table, const DrillOptions& options) {
    CaseSettings settings;
    settings.Threads = options.Reading.Threads;
    if (options.Weight) {
        settings.Weight = WeightNamed(table, *options.Weight);
    }
    if (options.Formula) {
        settings.Selection = SelectCases(table, *options.Formula, &settings.Notices);
    }
    return settings;
}

std::vector<std::string> SettingTexts(const DrillOptions& options) {
    return SettingTexts({.Weight = options.Weight,
                         .WeightedMoments = options.WeightedMoments,
                         .Formula = options.Formula,
                         .Casewise = options.Casewise,
                         .ReviewCasewise = options.ReviewCasewise,
                         .MissingNotCounted = options.NoCountMissing});
}

}  // namespace quillara
