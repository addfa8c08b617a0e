#include "workbench/scripting/ScriptedAnalysis.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <string_view>
#include <utility>

#include "host/AnalysisDialog.h"
#include "host/Exceptions.h"
#include "resources/ControlIds.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/data/CategoryGroups.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/documents/Remarks.h"
#include "workbench/formats/OddCases.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/ClosingAnalyses.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/hosting/ScriptDesk.h"
#include "workbench/hosting/ScriptPress.h"
#include "workbench/hosting/StepHistory.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/scripting/CategorizationEntry.h"
#include "workbench/scripting/CategorizationInData.h"
#include "workbench/scripting/CategoryAnswer.h"
#include "workbench/scripting/JoinedVariables.h"
#include "workbench/scripting/ListedSteps.h"
#include "workbench/windows/Window.h"

namespace quillara {

namespace {

constexpr std::size_t MostGroupings = 1000;  // of several categories, in one analysis

/// Works in the dialog of a script as a person does.
class ScriptActions final : public DialogActions {
  public:
    explicit ScriptActions(CAnalysisModelessDialog& dialog) : Dialog(dialog) {}

    void Press(int id) override {
        Act([id](Window& window) { window.Click(id); });
    }

    void Press(int id, const Answer& answer) override {
        bool isAnswered = false;
        Act([id](Window& window) { window.Click(id); },
            [&](Window& window) {
                answer(window);
                isAnswered = window.IsClosed();
            });
        if (!isAnswered) {
            throw DataError("The dialog doesn't accept what was entered.");
        }
    }

    void ClickRow(int list, int row) override {
        Act([=](Window& window) { window.ClickRow(list, row); });
    }

    void TypeNumber(int field, double number) override {
        Act([=](Window& window) { window.TypeNumber(field, number); });
    }

    const Control& At(int id) override { return DialogHost::WindowOf(Dialog)->At(id); }

  private:
    void Act(const std::function<void(Window&)>& action, const Answer& answer = {}) {
        const auto act = [&action](Window& window) { return action(window), 0; };
        static_cast<void>(ActAsPerson(Dialog, act, answer));
    }

    CAnalysisModelessDialog& Dialog;
};

void CheckCanBeCategorized(DialogActions& actions, const Variable& variable) {
    constexpr int methods = UserIntervalsRadio - DistinctValuesRadio + 1;
    for (int method = 0; method < methods; ++method) {
        if (!actions.At(DistinctValuesRadio + method).Enabled) {
            throw DataError("The variable " + Quoted(variable.Name) + " can't be categorized: it " +
                            (variable.Kind == ValueKind::Text ? "holds texts." : "is no continuous drill variable."));
        }
    }
}

/// The click has the page applied.
void StoreShownPage(DialogActions& actions) {
    const Control& list = actions.At(DrillDownListControl);
    if (list.Enabled && !list.Rows.empty()) {
        actions.ClickRow(DrillDownListControl, std::max(list.Selected, 0));
    }
}

/// New boundaries of a variable that has some already would count with the next reading of the cases only.
void LeaveBoundaries(DialogActions& actions) {
    if (actions.At(UserIntervalsRadio).Checked) {
        actions.Press(IntegerCategoriesRadio);
        StoreShownPage(actions);
    }
}

/// Of equal names only the first can be meant.
void TellOfEqualNames(CAnalysisDoc& document, const CategoryList& list, std::size_t row, const std::string& category) {
    if (auto remark = RemarkOnEqualNames(list, row, category)) {
        Notice(&document, std::move(*remark));
    }
}

}  // namespace

ScriptedAnalysis::Whole::Whole(std::shared_ptr<const DataTable> table)
    : Table(std::move(table)), Library(AnalysisModule::DrillDownPath()), Document(*Table) {}

ScriptedAnalysis::ScriptedAnalysis(std::shared_ptr<const DataTable> table, const CasesInForce& cases,
                                   const std::atomic<bool>& cancelled)
    : Held(std::make_shared<Whole>(std::move(table))) {
    AnalysisDocument& document = Held->Document;
    std::vector<Remark> notices = cases.Notices;
    if (!cases.Formula.empty()) {
        TableOf(&document).Select(SelectCases(*Held->Table, cases.Formula, &notices), cases.Formula);
    }
    document.SetWeight(cases.Weight);
    TableOf(&document).RoomForMore = MostGroupings;
    document.Services.BreakFlag = &cancelled;
    document.Services.ShowMessage = [](std::string_view text) { TheScriptDesk().Keep(text); };
    std::vector<Remark> onReading = cases.OnReading;
    DropObeyed(onReading, TableOf(&document).Selection);
    Notice(&document, onReading);
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

CAnalysisModelessDialog& ScriptedAnalysis::OpenDialog() const {
    CAnalysisModelessDialog* dialog = StartupDialog();
    if (dialog == nullptr) {
        throw new COleException(CO_E_OBJNOTCONNECTED);
    }
    return *dialog;
}

void ScriptedAnalysis::StepDown(std::size_t variable, const RowChooser& chooseRow) {
    CAnalysisModelessDialog& dialog = OpenDialog();
    const Variable& chosen = Held->Document.Table().Variables.at(variable - 1);
    bool isAnswered = false;
    const auto answer = [&](Window& window) {
        AnswerWithCategory(window, chosen, chooseRow);
        isAnswered = true;
    };
    const auto press = [](Window& window) { return window.Click(DownButton), 0; };
    const PressOutcome outcome = ActAsPerson(dialog, press, answer);
    if (!isAnswered) {
        throw DataError(outcome.Record.Messages.empty() ? "The step was cancelled." : FailureOf(outcome.Record));
    }
}

void ScriptedAnalysis::StorePage() {
    ScriptActions actions(OpenDialog());
    StoreShownPage(actions);
}

void ScriptedAnalysis::Categorize(std::size_t variable, const std::string& method) {
    ScriptActions actions(OpenDialog());
    const Variable& chosen = Held->Document.Table().Variables.at(variable - 1);
    const Categorization asked = ParseCategorization(method);
    CheckCanBeCategorized(actions, chosen);
    const Categorization entered = InData(asked, chosen, TableOf(&Held->Document).Selection);
    NoticeCategorization(Held->Document, asked, chosen);
    LeaveBoundaries(actions);
    EnterCategorization(actions, entered);
    StoreShownPage(actions);
    Entered.insert_or_assign(static_cast<short>(variable), entered);
}

ScriptedAnalysis::Grouped ScriptedAnalysis::Group(std::size_t variable, const std::vector<std::string>& categories) {
    ScriptActions actions(OpenDialog());
    AnalysisDocument& document = Held->Document;
    const std::string name = document.Table().Variables.at(variable - 1).Name;
    const auto number = static_cast<short>(variable);
    if (!IsDrillVariable(document, number) || IsContinuousDrillVariable(document, number)) {
        throw DataError("Several categories at once are those of categorical drill variables; " + Quoted(name) +
                        (IsDrillVariable(document, number)
                             ? " is continuous; table.compute makes groups with cut or in."
                             : " is none; name it in table.drill(...)."));
    }
    const CategoryGroup group = GroupOf(document.Table(), document.Table().Variables[variable - 1], categories);
    if (!document.Table().Find(group.Grouping.Name)) {
        ExtendTable(document, group.Grouping);
        if (Kept != nullptr) {
            Kept->FollowTable();
        }
    }
    const std::size_t index = document.Table().IndexOf(group.Grouping.Name);
    if (!IsDrillVariable(document, static_cast<short>(index + 1))) {
        StoreShownPage(actions);
        JoinDrillVariables(actions, document, static_cast<short>(index + 1), Entered);
    }
    return {index + 1, group.Category};
}

std::vector<std::string> ScriptedAnalysis::Names() {
    std::vector<std::string> names;
    std::ranges::transform(Analysed().Table().Variables, std::back_inserter(names), &Variable::Name);
    return names;
}

std::vector<std::string> ScriptedAnalysis::Steps() const {
    return DialogHost::WindowOf(OpenDialog())->At(DrillUpListControl).Rows;
}

void ScriptedAnalysis::Down(std::size_t variable, const std::string& category) {
    StepDown(variable, [&](const CategoryList& list) {
        const std::size_t row = FindCategory(list, category);
        TellOfEqualNames(Held->Document, list, row, category);
        if (std::optional<Remark> remark = RemarkOnChoice(list, category, row)) {
            Notice(&Held->Document, std::move(*remark));
        }
        return row;
    });
}

std::vector<SpreadsheetDocument> ScriptedAnalysis::Each(const std::vector<std::string>& variables) {
    ScriptActions actions(OpenDialog());
    ListedSteps steps(actions, Held->Document);
    IntervalCounts intervals;
    for (const auto& [number, how] : Entered) {
        if (const std::optional<std::size_t> count = IntervalsOf(how)) {
            intervals[Held->Document.Table().Variables[static_cast<std::size_t>(number) - 1].Name] = *count;
        }
    }
    std::vector<SpreadsheetDocument> tables = GroupsSideBySide(steps, Held->Document, variables, intervals);
    Keep({tables.begin(), tables.end()}, "groups");
    return tables;
}

void ScriptedAnalysis::Keep(const std::vector<DocumentContent>& documents, const std::string& result) {
    if (Kept != nullptr) {
        Kept->Keep(documents, result);
    }
}

Cut ScriptedAnalysis::CutBy(std::size_t variable, const std::string& method) {
    const Variable& chosen = Analysed().Table().Variables.at(variable);
    return quillara::CutBy(InData(ParseCategorization(method), chosen, TableOf(&Analysed()).Selection));
}

AnalysisDocument& ScriptedAnalysis::Analysed() {
    if (Held == nullptr) {
        throw new COleException(CO_E_OBJNOTCONNECTED);
    }
    return Held->Document;
}

std::optional<RemainingSubset> ScriptedAnalysis::Subset() {
    if (Held == nullptr) {
        return std::nullopt;
    }
    AnalysisDocument& document = Held->Document;
    const std::optional<SubsetSize> left = CountRemaining(document);
    const std::optional<SubsetSize> whole = CountSelected(document);
    if (!left || !whole) {
        return std::nullopt;
    }
    const std::vector<StepTaken>& taken = StepsOf(&document).Taken();
    const bool hasSteps = StepsInForceNow(document).value_or(0) > 0;
    return RemainingSubset{*left, whole->Cases,
                           hasSteps ? StepsInForce(taken, taken.size()) : std::vector<StepTaken>()};
}

std::vector<std::optional<std::int32_t>> ScriptedAnalysis::Sizes() {
    const auto cases = [](const std::optional<SubsetSize>& size) {
        return size ? std::optional(size->Cases) : std::nullopt;
    };
    std::vector<std::optional<std::int32_t>> sizes{cases(CountSelected(Analysed()))};
    for (const StepTaken& step : StepsOf(&Analysed()).Taken()) {
        sizes.push_back(cases(step.Left));
    }
    return sizes;
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
