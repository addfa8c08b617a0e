#include "workbench/scripting/ScriptedAnalysis.h"

#include <string_view>
#include <utility>

#include "host/AnalysisDialog.h"
#include "host/Exceptions.h"
#include "resources/ControlIds.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/data/Errors.h"
#include "workbench/hosting/ScriptDesk.h"
#include "workbench/hosting/ScriptPress.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/scripting/CategoryAnswer.h"
#include "workbench/windows/Window.h"

namespace quillara {

ScriptedAnalysis::ScriptedAnalysis(std::shared_ptr<const DataTable> table, const CasesInForce& cases,
                                   const std::atomic<bool>& cancelled)
    : Table(std::move(table)),
      Library(AnalysisModule::DrillDownPath()),
      Document(std::make_unique<AnalysisDocument>(*Table)) {
    if (!cases.Formula.empty()) {
        TableOf(Document.get()).Select(SelectCases(*Table, cases.Formula), cases.Formula);
    }
    Document->SetWeight(cases.Weight);
    Document->Services.BreakFlag = &cancelled;
    Document->Services.ShowMessage = [](std::string_view text) { TheScriptDesk().Keep(text); };
    Document->Adopt(Library.NewAnalysis());
    if (!Document->RunSequence() || Document->StartupWindow() == nullptr) {
        throw DataError("There is not enough memory for this analysis.");
    }
    Kept = ScriptOutputs::Of(*Document);
}

ScriptedAnalysis::~ScriptedAnalysis() {
    Close();
}

CountedPointer<IDispatch> ScriptedAnalysis::Dialog() {
    CAnalysisModelessDialog* dialog = Document == nullptr ? nullptr : Document->Analysis().GetStartupDialog();
    return QueryFor<IDispatch>(dialog == nullptr ? nullptr : dialog->GetUnknown());
}

CountedPointer<IDispatch> ScriptedAnalysis::Analysis() {
    return Document == nullptr ? CountedPointer<IDispatch>() : Document->AutomationObject();
}

void ScriptedAnalysis::Down(std::size_t variable, const std::string& category) {
    CAnalysisModelessDialog* dialog = Document == nullptr ? nullptr : Document->Analysis().GetStartupDialog();
    if (dialog == nullptr) {
        throw new COleException(CO_E_OBJNOTCONNECTED);
    }
    const Variable& chosen = Document->Table().Variables.at(variable - 1);
    bool isAnswered = false;
    const auto answer = [&](Window& window) {
        AnswerWithCategory(window, chosen, [&](const CategoryList& list) { return FindCategory(list, category); });
        isAnswered = true;
    };
    const auto press = [](Window& window) { return window.Click(DownButton), 0; };
    const PressOutcome outcome = ActAsPerson(*dialog, press, answer);
    if (!isAnswered) {
        throw DataError(outcome.Record.Messages.empty() ? "The step was cancelled." : FailureOf(outcome.Record));
    }
}

void ScriptedAnalysis::Close() {
    if (Document != nullptr && Kept != nullptr) {
        Kept->End();
    }
    Document.reset();
}

}  // namespace quillara
