#include "workbench/exploration/ExploredOutputs.h"

#include <algorithm>
#include <tuple>

#include "workbench/documents/ResultNames.h"
#include "workbench/exploration/Exploration.h"
#include "workbench/hosting/StepHistory.h"
#include "workbench/scripting/SettingTexts.h"
#include "workbench/views/PlainCharts.h"

namespace quillara {
namespace {

/// Whether a character of a name may stand in the name of a file anywhere.
bool IsPlain(char character) {
    static constexpr std::string_view never = "/\\:*?\"<>|";
    return static_cast<unsigned char>(character) >= ' ' && never.find(character) == std::string_view::npos;
}

}  // namespace

OutputCollection OutputsOf(Exploration& exploration, std::vector<CountedPointer<ResultDocument>> documents) {
    OutputCollection outputs;
    const DataTable& table = exploration.Table();
    outputs.FileName = table.FileName;
    outputs.Cases = table.Cases;
    outputs.Variables = static_cast<int>(table.Variables.size());
    outputs.Selected = exploration.Selected();
    if (!exploration.HasEnded()) {
        outputs.Settings = SettingTexts(SettingsOf(exploration.Analysed(), exploration.Startup()));
    }
    outputs.Steps = StepsOf(&exploration.Analysed()).Taken();
    std::ranges::sort(documents, {},
                      [](const auto& document) { return std::tuple(document->Step(), document->Number()); });
    for (const CountedPointer<ResultDocument>& document : documents) {
        outputs.Step = document->Step();
        outputs.Add(document->Content(), document->Origin());
    }
    return outputs;
}

OutputCollection OutputsForPeople(Exploration* exploration,
                                  const std::vector<CountedPointer<ResultDocument>>& documents) {
    if (exploration == nullptr) {
        OutputCollection outputs;
        for (const CountedPointer<ResultDocument>& document : documents) {
            outputs.Add(document->Content(), document->Origin());
        }
        return outputs;
    }
    OutputCollection outputs = Titled(OutputsOf(*exploration, documents), {});
    for (OutputEntry& entry : outputs.Entries) {
        auto* table = std::get_if<SpreadsheetDocument>(&entry.Content);
        if (table != nullptr && entry.Command != 0 && !table->Title.empty()) {
            const std::vector<std::string> lines = SubsetLines(outputs, entry.Step);
            table->Title.resize(1);
            table->Title.insert(table->Title.end(), lines.begin(), lines.end());
        }
    }
    return outputs;
}

GraphDocument GraphForPeople(Exploration& exploration, const ResultDocument& document) {
    return Titled(*document.Graph(), OutputsOf(exploration, {}), document.Step(), {});
}

std::vector<std::string> SubsetLinesOf(Exploration& exploration, const ResultDocument& document) {
    return SubsetLines(OutputsOf(exploration, {}), document.Step());
}

std::vector<std::string> FactsOf(const OutputCollection& outputs) {
    std::vector<std::string> facts{std::to_string(outputs.Cases) + " cases, " + std::to_string(outputs.Variables) +
                                   " variables"};
    if (outputs.Selected && outputs.Selected->Cases != outputs.Cases) {
        facts.push_back(std::to_string(outputs.Selected->Cases) + " cases selected");
    }
    facts.insert(facts.end(), outputs.Settings.begin(), outputs.Settings.end());
    return facts;
}

std::string FileNameFor(const ResultDocument& document) {
    const DocumentOrigin& origin = document.Origin();
    const Subject& about =
        std::visit([](const auto& content) -> const Subject& { return content.About; }, document.Content());
    std::string name(origin.Result.empty() ? NameOfResult(origin.Command) : origin.Result);
    if (name.empty()) {
        name = document.Graph() != nullptr ? "chart" : "table";
    }
    if (const std::string subject = about.Name(); !subject.empty()) {
        name += ' ' + subject;
    }
    std::erase_if(name, [](char character) { return !IsPlain(character); });
    return name;
}

}  // namespace quillara
