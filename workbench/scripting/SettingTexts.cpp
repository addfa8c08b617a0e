#include "workbench/scripting/SettingTexts.h"

#include <initializer_list>
#include <utility>

#include "resources/ControlIds.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

bool IsChecked(Window& window, int box) {
    const Control* control = window.Find(box);
    return control != nullptr && control->Checked;
}

}  // namespace

SettingsInForce SettingsOf(AnalysisDocument& analysis, Window& startup) {
    const TableInUse& data = TableOf(&analysis);
    SettingsInForce settings;
    if (data.IsWeighted && data.WeightVariable) {
        settings.Weight = data.Table().Variables[*data.WeightVariable].Name;
    }
    if (!data.SelectionFormula.empty()) {
        settings.Formula = data.SelectionFormula;
    }
    settings.WeightedMoments = IsChecked(startup, WeightedMomentsBox);
    settings.Casewise = IsChecked(startup, CasewiseBox);
    settings.ReviewCasewise = IsChecked(startup, ReviewCasewiseBox);
    settings.MissingNotCounted = !IsChecked(startup, CountMissingBox);
    return settings;
}

std::vector<std::string> SettingTexts(const SettingsInForce& settings) {
    std::vector<std::string> texts;
    if (settings.Weight) {
        const std::string manner = settings.WeightedMoments ? ", fractions as they are" : ", rounded to whole numbers";
        texts.push_back("Weight: " + *settings.Weight + manner);
        texts.emplace_back("Std.Dev. of descriptives: the weighted squares over the number of cases less 1");
    }
    if (settings.Formula) {
        texts.push_back("Selection: " + *settings.Formula);
    }
    const std::initializer_list<std::pair<bool, const char*>> boxes = {
        {settings.Casewise, "Missing data deleted casewise"},
        {settings.ReviewCasewise, "Missing data of review variables deleted casewise"},
        {settings.MissingNotCounted, "Missing data not counted"},
    };
    for (const auto& [isPressed, text] : boxes) {
        if (isPressed) {
            texts.emplace_back(text);
        }
    }
    return texts;
}

}  // namespace quillara
