#include "workbench/scripting/ScriptOutputs.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "resources/ControlIds.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/hosting/StepHistory.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/scripting/SettingTexts.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

/// Of all analyses; nothing as long as nobody has asked for them.
std::optional<std::vector<std::shared_ptr<ScriptOutputs>>>& Kept() {
    static auto& kept = *new std::optional<std::vector<std::shared_ptr<ScriptOutputs>>>;
    return kept;
}

}  // namespace

void ScriptOutputs::KeepFromNowOn() {
    if (!Kept()) {
        Kept().emplace();
    }
}

std::shared_ptr<ScriptOutputs> ScriptOutputs::Of(AnalysisDocument& analysis) {
    if (!Kept()) {
        return nullptr;
    }
    auto outputs = std::make_shared<ScriptOutputs>(analysis);
    analysis.Services.Recorder = outputs.get();
    const auto taking = [own = outputs.get()](bool standsAlone) {
        return [own, standsAlone](ResultDocument& document) { own->Take(document, standsAlone); };
    };
    analysis.Services.TakeDocument = taking(false);
    analysis.Services.HearStandAlone = taking(true);
    outputs->Present();
    Kept()->push_back(outputs);
    return outputs;
}

std::vector<OutputCollection> ScriptOutputs::All() {
    std::vector<OutputCollection> all;
    for (const auto& outputs : Kept() ? *Kept() : std::vector<std::shared_ptr<ScriptOutputs>>()) {
        outputs->NoteCourse();
        std::ranges::transform(outputs->Runs, std::back_inserter(all), Finished);
    }
    return all;
}

void ScriptOutputs::End() {
    NoteCourse();
    Analysis->Services.Recorder = nullptr;
    Analysis->Services.TakeDocument = nullptr;
    Analysis->Services.HearStandAlone = nullptr;
    Analysis = nullptr;
}

void ScriptOutputs::FollowTable() {
    Runs.back().Table = &Analysis->Table();
    Runs.back().Shown.Variables = static_cast<int>(Analysis->Table().Variables.size());
}

void ScriptOutputs::Keep(const std::vector<DocumentContent>& documents, const std::string& result) {
    Run& run = Present();
    run.Shown.Steps = StepsOf(Analysis).Taken();
    const auto step = static_cast<int>(run.Shown.Steps.size());
    int sequence = static_cast<int>(std::ranges::count_if(run.Documents, [&](const KeptDocument& kept) {
        return kept.Step == step && kept.Document->Origin().Result == result;
    }));
    for (const DocumentContent& content : documents) {
        run.Documents.push_back({ResultDocument::Create(content, {0, ++sequence, result}, OfHost), step, 0, false});
    }
    NoteSettings(run);
}

/// The run of the table that is open now.
ScriptOutputs::Run& ScriptOutputs::Present() {
    const DataTable& table = Analysis->Table();
    if (Runs.empty() || Runs.back().Table != &table) {
        Run& run = Runs.emplace_back();
        run.Table = &table;
        run.Shown.FileName = table.FileName;
        run.Shown.Cases = table.Cases;
        run.Shown.Variables = static_cast<int>(table.Variables.size());
    }
    return Runs.back();
}

/// What the analysis has taken and noticed, for the run of its table; that of an earlier one is known already.
void ScriptOutputs::NoteCourse() {
    const bool isClosed = Analysis == nullptr;
    if (isClosed || (StepsOf(Analysis).Taken().empty() && Runs.back().Table != &Analysis->Table())) {
        return;  // nothing has been done with the table
    }
    OutputCollection& shown = Present().Shown;
    shown.Selected = CountSelected(*Analysis);
    shown.Steps = StepsOf(Analysis).Taken();
    for (const Remark& remark : RemarksOn(Analysis).All()) {
        shown.Noticed.Add(remark);
    }
}

/// One that stands alone has had the content of an earlier step, or of another table.
void ScriptOutputs::Take(ResultDocument& document, bool standsAlone) {
    for (Run& run : Runs) {
        std::erase_if(run.Documents, [&](const KeptDocument& kept) { return kept.Document.Get() == &document; });
    }
    Run& run = Present();
    run.Shown.Steps = StepsOf(Analysis).Taken();
    const auto step = static_cast<int>(run.Shown.Steps.size());
    const int earlier = standsAlone ? 0 : EarlierPairs(run, document);
    run.Documents.push_back({CountedPointer<ResultDocument>::Share(&document), step, earlier, standsAlone});
    NoteSettings(run);
}

/// A press makes the 3D histograms of each variable of one list with each of another; several presses are one request
/// of all pairs, as in drill.
int ScriptOutputs::EarlierPairs(const Run& run, const ResultDocument& document) {
    const auto step = static_cast<int>(run.Shown.Steps.size());
    int pairs = 0;
    for (const KeptDocument& kept : run.Documents) {
        if (kept.Step == step && kept.Document->Origin().Command == Review3DHistogramsButton) {
            pairs = document.Origin().Sequence == 1 ? pairs + 1 : kept.EarlierPairs;
        }
    }
    return document.Origin().Command == Review3DHistogramsButton ? pairs : 0;
}

/// Settings apply to all documents of a run, or they aren't said of it.
void ScriptOutputs::NoteSettings(Run& run) const {
    Window* startup = Analysis->StartupWindow();
    if (startup == nullptr) {
        return;
    }
    const std::vector<std::string> now = SettingTexts(SettingsOf(*Analysis, *startup));
    if (!std::exchange(run.HasSettings, true)) {
        run.Shown.Settings = now;
    }
    std::erase_if(run.Shown.Settings,
                  [&now](const std::string& text) { return std::ranges::find(now, text) == now.end(); });
}

/// One that stands alone and that a step has made no more has lost its window.
bool ScriptOutputs::KeptDocument::IsOpen() const {
    return !Document->IsClosed() && (!StandsAlone || Document->IsVisible());
}

OutputCollection ScriptOutputs::Finished(const Run& run) {
    OutputCollection shown = run.Shown;
    std::ranges::for_each(shown.Steps, [](StepTaken& step) { step.IsOfGroup = true; });
    std::vector<KeptDocument> documents = run.Documents;
    std::erase_if(documents, [](const KeptDocument& kept) { return !kept.IsOpen(); });
    std::ranges::sort(documents, {},
                      [](const KeptDocument& kept) { return std::pair(kept.Step, kept.Document->Number()); });
    for (const KeptDocument& kept : documents) {
        shown.Step = kept.Step;
        DocumentOrigin origin = kept.Document->Origin();
        origin.Sequence += kept.EarlierPairs;
        shown.Add(kept.Document->Content(), origin);
    }
    return shown;
}

}  // namespace quillara
