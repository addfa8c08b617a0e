#include "workbench/scripting/ScriptedAnalysis.h"

#include <string_view>
#include <utility>

#include "host/AnalysisDialog.h"
#include "host/Exceptions.h"
#include "resources/ControlIds.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/data/Errors.h"
#include "workbench/documents/Remarks.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/ClosingAnalyses.h"
#include "workbench/hosting/ScriptDesk.h"
#include "workbench/hosting/ScriptPress.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/scripting/CategoryAnswer.h"
#include "workbench/windows/Window.h"

namespace quillara {

ScriptedAnalysis::Whole::Whole(std::shared_ptr<const DataTable> table)
    : Table(std::move(table)), Library(AnalysisModule::DrillDownPath()), Document(*Table) {}

ScriptedAnalysis::ScriptedAnalysis(std::shared_ptr<const DataTable> table, const CasesInForce& cases,
                                   const std::atomic<bool>& cancelled)
    : Held(std::make_shared<Whole>(std::move(table))) {
    AnalysisDocument& document = Held->Document;
    std::vector<FormulaNotice> notices = cases.Notices;
    if (!cases.Formula.empty()) {
        TableOf(&document).Select(SelectCases(*Held->Table, cases.Formula, &notices), cases.Formula);
    }
    document.SetWeight(cases.Weight);
    document.Services.BreakFlag = &cancelled;
    document.Services.ShowMessage = [](std::string_view text) { TheScriptDesk().Keep(text); };
    document.Services.HearRemark = [](const Remark& remark) { TheScriptDesk().Keep({remark.Line(), remark.Code}); };
    Notice(&document, notices);
    document.Adopt(Held->Library.NewAnalysis());
    if (!document.RunSequence() || document.StartupWindow() == nullptr) {
        throw DataError("There is not enough memory for this analysis.");
    }
    Kept = ScriptOutputs::Of(document);
}

ScriptedAnalysis::~ScriptedAnalysis() {
    Close();
}

CAnalysisModelessDialog* ScriptedAnalysis::StartupDialog() const {
    return Held == nullptr ? nullptr : Held->Document.Analysis().GetStartupDialog();
}

CountedPointer<IDispatch> ScriptedAnalysis::Dialog() {
    CAnalysisModelessDialog* dialog = StartupDialog();
    return QueryFor<IDispatch>(dialog == nullptr ? nullptr : dialog->GetUnknown());
}

CountedPointer<IDispatch> ScriptedAnalysis::Analysis() {
    return Held == nullptr ? CountedPointer<IDispatch>() : Held->Document.AutomationObject();
}

void ScriptedAnalysis::StepDown(std::size_t variable, const RowChooser& chooseRow) {
    CAnalysisModelessDialog* dialog = StartupDialog();
    if (dialog == nullptr) {
        throw new COleException(CO_E_OBJNOTCONNECTED);
    }
    const Variable& chosen = Held->Document.Table().Variables.at(variable - 1);
    bool isAnswered = false;
    const auto answer = [&](Window& window) {
        AnswerWithCategory(window, chosen, chooseRow);
        isAnswered = true;
    };
    const auto press = [](Window& window) { return window.Click(DownButton), 0; };
    const PressOutcome outcome = ActAsPerson(*dialog, press, answer);
    if (!isAnswered) {
        throw DataError(outcome.Record.Messages.empty() ? "The step was cancelled." : FailureOf(outcome.Record));
    }
}

void ScriptedAnalysis::Down(std::size_t variable, const std::string& category) {
    StepDown(variable, [&](const CategoryList& list) { return FindCategory(list, category); });
}

std::optional<ScriptedAnalysis::RowTaken> ScriptedAnalysis::DownRow(std::size_t variable, std::size_t row) {
    RowTaken taken;
    bool isEmpty = false;
    try {
        StepDown(variable, [&](const CategoryList& list) {
            isEmpty = list.Rows.empty();
            if (row >= list.Rows.size()) {
                throw DataError("The list of categories has no such row.");
            }
            taken = {NameForPeople(list, list.Rows[row]), list.Rows.size()};
            return row;
        });
    } catch (const DataError&) {
        if (!isEmpty) {
            throw;
        }
        return std::nullopt;
    }
    return taken;
}

AnalysisDocument& ScriptedAnalysis::Analysed() {
    if (Held == nullptr) {
        throw new COleException(CO_E_OBJNOTCONNECTED);
    }
    return Held->Document;
}

void ScriptedAnalysis::Close() {
    if (Held == nullptr) {
        return;
    }
    if (Kept != nullptr) {
        Kept->End();
    }
    const std::shared_ptr<Whole> whole = std::move(Held);
    LetGo(whole->Document, whole);
}

}  // namespace quillara
