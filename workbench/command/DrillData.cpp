#include "workbench/command/DrillData.h"

#include "workbench/command/DataReading.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/formats/Dictionary.h"
#include "workbench/scripting/SettingTexts.h"

namespace quillara {

DataTable OpenData(const DrillOptions& options) {
    DataTable table = ReadDataWithProgress(options.File, options.Reading);
    if (options.DictionaryFile) {
        ApplyDictionary(table, *options.DictionaryFile, options.Reading.MaxMemory);
    }
    return table;
}

CaseSettings SettingsFor(const DataTable& table, const DrillOptions& options) {
    CaseSettings settings;
    settings.Threads = options.Reading.Threads;
    if (options.Weight) {
        settings.Weight = WeightNamed(table, *options.Weight);
    }
    if (options.Formula) {
        settings.Selection = SelectCases(table, *options.Formula);
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
