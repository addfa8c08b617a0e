#include "workbench/command/DrillData.h"

#include <initializer_list>
#include <utility>

#include "workbench/command/DataReading.h"
#include "workbench/command/Dictionary.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/data/Errors.h"

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
    if (options.Weight) {
        settings.Weight = WeightNamed(table, *options.Weight);
    }
    if (options.Formula) {
        settings.Selection = SelectCases(table, *options.Formula);
    }
    return settings;
}

std::vector<std::string> SettingTexts(const DrillOptions& options) {
    std::vector<std::string> texts;
    if (options.Weight) {
        const std::string manner = options.WeightedMoments ? ", fractions as they are" : ", rounded to whole numbers";
        texts.push_back("Weight: " + *options.Weight + manner);
    }
    if (options.Formula) {
        texts.push_back("Selection: " + *options.Formula);
    }
    const std::initializer_list<std::pair<bool, const char*>> boxes = {
        {options.Casewise, "Missing data deleted casewise"},
        {options.ReviewCasewise, "Missing data of review variables deleted casewise"},
        {options.NoCountMissing, "Missing data not counted"},
    };
    for (const auto& [isPressed, text] : boxes) {
        if (isPressed) {
            texts.emplace_back(text);
        }
    }
    return texts;
}

}  // namespace quillara
