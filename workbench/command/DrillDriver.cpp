#include "workbench/command/DrillDriver.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "engine/DrillDown.h"
#include "resources/StringTable.h"
#include "workbench/command/Interruption.h"
#include "workbench/data/Errors.h"
#include "workbench/support/AnalysisModule.h"

namespace quillara {
namespace {

constexpr const char* NoMemory = "There is not enough memory for this analysis.";

/// A button that shows results.
struct ResultButton {
    int Number;
    bool (*IsEnabled)(const CDrillDown&);
    std::int16_t (CDrillDown::*Operation)(HWND);
};

bool HasSteps(const CDrillDown& analysis) {
    return !analysis.GetDrillUps()->empty();
}

bool HasOpenVariables(const CDrillDown& analysis) {
    return !analysis.GetDrillDowns()->empty();
}

bool CanDescribe(const CDrillDown& analysis) {
    return analysis.GetDrillDownsContSize() > 0 && analysis.NoMissingDrill() != 0;
}

bool HasReviewVariables(const CDrillDown& analysis) {
    return analysis.GetNoRVCategorical() + analysis.GetNoRVContinuous() > 0;
}

bool HasContinuousReviewVariables(const CDrillDown& analysis) {
    return analysis.GetNoRVContinuous() > 0;
}

// clang-format off
constexpr std::array<ResultButton, 5> ResultButtons{{
    // Number IsEnabled                     Operation
    {9058,    HasSteps,                     &CDrillDown::DDNSummary},
    {9059,    CanDescribe,                  &CDrillDown::DDNDescriptive},
    {9060,    HasOpenVariables,             &CDrillDown::DDNFrequency},
    {9081,    HasContinuousReviewVariables, &CDrillDown::RVSummary},
    {9082,    HasReviewVariables,           &CDrillDown::RVFrequency},
}};
// clang-format on

const ResultButton& ButtonOf(int number) {
    return *std::ranges::find(ResultButtons, number, &ResultButton::Number);
}

bool UsesCount(const Categorization& chosen) {
    return chosen.Method == ExactIntervals || chosen.Method == NeatIntervals;
}

/// Whether the categorization page would leave the record alone. New boundaries alone are no change to it.
bool IsUnchanged(const Drill& record, const Categorization& chosen) {
    if (record.Method != chosen.Method) {
        return false;
    }
    switch (chosen.Method) {
        case ExactIntervals:
            return record.ExactCount == chosen.Count;
        case NeatIntervals:
            return record.NeatCount == chosen.Count;
        case StepIntervals:
            return (record.StartAtMin == 1) == chosen.StartAtMin && record.StepSize == chosen.StepSize &&
                   record.StepStart == chosen.StepStart;
        default:
            return true;
    }
}

void WriteTo(Drill& record, const Categorization& chosen) {
    const bool steps = chosen.Method == StepIntervals;
    record.Method = chosen.Method;
    record.ExactCount = record.NeatCount = UsesCount(chosen) ? chosen.Count : 0;
    record.StepSize = steps ? chosen.StepSize : 0.0;
    record.StepStart = steps ? chosen.StepStart : 0.0;
    record.StartAtMin = steps && chosen.StartAtMin ? 1 : 0;
}

/// The categories with cases, then the missing data when it is counted and there is some.
std::vector<CategoryRow> RowsOf(CDrillDown& analysis) {
    std::vector<CategoryRow> rows;
    for (const Categories& category : *std::as_const(analysis).GetCurrentCategories()) {
        if (IsNonZero(category.Count)) {
            rows.push_back({category.Name, category.Lower, category.Upper, false});
        }
    }
    if (analysis.GetCountMD() == 1 && IsNonZero(analysis.GetCurrentMCount())) {
        rows.push_back({analysis.GetResourceString(MissingText), 0.0, 0.0, true});
    }
    return rows;
}

bool Holds(const CDrillDown& analysis, const CDrillDown::DrillSet* set, short variable) {
    return analysis.LookFor(variable, set) != set->end();
}

}  // namespace

struct DrillDriver::State {
    State(const DataTable& table, CaseSettings settings, AnalysisServices services);

    /// Reads cases: nothing is left to do once the user has asked to cancel.
    template <typename Pass>
    void Run(Pass pass) {
        pass();
        if (IsCancelled()) {
            throw Interrupted();
        }
    }
    [[nodiscard]] bool IsCancelled() const;
    void Choose(const VariableLists& variables, const std::function<int()>& operation);
    void SelectDown(short variable) {
        Module.SetCurrentDown(variable);
        Module.SetSelected(-1);
    }
    void BringCategoriesUpToDate();
    CategoryList CurrentCategories();

    const DataTable& Table;
    AnalysisModule Library;
    CAnalysisDoc Document;
    CDrillDown& Module;
    VariableLists Answer;  ///< to the next variable dialog

  private:
    static CDrillDown& Open(const AnalysisModule& library, CAnalysisDoc& document);
};

DrillDriver::State::State(const DataTable& table, CaseSettings settings, AnalysisServices services)
    : Table(table), Library(AnalysisModule::DrillDownPath()), Document(table), Module(Open(Library, Document)) {
    Document.SetSelection(std::move(settings.Selection));
    Document.SetWeight(settings.Weight);
    Document.Services = std::move(services);
    Document.Services.ChooseVariables = [this](const VariableListRequest&) { return Answer; };
    if (!Document.RunSequence()) {
        throw DataError(NoMemory);
    }
}

bool DrillDriver::State::IsCancelled() const {
    const AnalysisServices& services = Document.Services;
    return (services.BreakFlag != nullptr && services.BreakFlag->load()) ||
           (services.BreakRequested && services.BreakRequested());
}

void DrillDriver::State::Choose(const VariableLists& variables, const std::function<int()>& operation) {
    Answer = variables;
    int result = 0;
    Run([&] { result = operation(); });
    if (result == 0) {
        throw DataError(NoMemory);
    }
}

CDrillDown& DrillDriver::State::Open(const AnalysisModule& library, CAnalysisDoc& document) {
    document.Adopt(library.NewAnalysis());
    return static_cast<CDrillDown&>(document.Analysis());
}

void DrillDriver::State::BringCategoriesUpToDate() {
    if (Module.DataChanged == 1) {
        Run([this] { Module.ReadAfterDrill(0); });
    }
    if (Module.GetCurrentIsset() == 0) {
        Run([this] { Module.ReadBeforeDrill(0); });
    }
}

CategoryList DrillDriver::State::CurrentCategories() {
    const auto index = static_cast<std::size_t>(Module.GetCurrentDown() - 1);
    return {Module.GetCurrentVariableName(), Module.GetCurrentMethod(), Table.Variables[index].Kind == ValueKind::Text,
            RowsOf(Module)};
}

DrillDriver::DrillDriver(const DataTable& table, CaseSettings settings, AnalysisServices services)
    : Analysis(std::make_unique<State>(table, std::move(settings), std::move(services))) {}

DrillDriver::~DrillDriver() = default;

void DrillDriver::ChooseDrillVariables(const VariableLists& variables) {
    const int all = Analysis->Module.Table.Variables;
    Analysis->Choose(variables, [&] { return Analysis->Module.SetDDNVariable(nullptr, 1, 0, all, 0, all, all); });
}

void DrillDriver::ChooseReviewVariables(const VariableLists& variables) {
    const int all = Analysis->Module.Table.Variables;
    Analysis->Choose(variables, [&] { return Analysis->Module.SetRVVariable(nullptr, 1, 0, all); });
}

void DrillDriver::Press(OptionBox box) {
    CDrillDown& analysis = Analysis->Module;
    switch (box) {
        case OptionBox::WeightedMoments:
            analysis.ChangeWM();
            break;
        case OptionBox::CasewiseDeletion:
            analysis.ChangeMD();
            break;
        case OptionBox::ReviewCasewiseDeletion:
            analysis.ChangeRVMD();
            break;
        case OptionBox::CountMissing:
            analysis.ChangeCountMD();
            break;
    }
    analysis.DataChanged = 1;
}

void DrillDriver::Categorize(short variable, const Categorization& chosen) {
    CDrillDown& analysis = Analysis->Module;
    Analysis->SelectDown(variable);
    if (chosen.Method == UserIntervals) {
        analysis.SetUserIntervals(chosen.Bounds.data(), static_cast<int>(chosen.Bounds.size()));
        analysis.SetIsset(variable, 0);
    }
    Drill& record = Editable(*analysis.LookFor(variable, analysis.GetDrillDowns()));
    if (!IsUnchanged(record, chosen)) {
        WriteTo(record, chosen);
        record.RebuildCategories();
        analysis.DataChanged = 1;
    }
}

bool DrillDriver::CanGoDown(short variable) const {
    return Holds(Analysis->Module, Analysis->Module.GetDrillDowns(), variable);
}

bool DrillDriver::CanGoUp(short variable) const {
    return Holds(Analysis->Module, Analysis->Module.GetDrillUps(), variable);
}

void DrillDriver::Down(short variable, const RowChooser& chooseRow) {
    CDrillDown& analysis = Analysis->Module;
    Analysis->SelectDown(variable);
    Analysis->BringCategoriesUpToDate();
    analysis.SetSelected(static_cast<std::int32_t>(chooseRow(Analysis->CurrentCategories())));
    analysis.MoveToDrillUps();
    Analysis->Run([&] { analysis.ReadAfterDrill(0); });
    analysis.SetAllIsset(0);
}

void DrillDriver::Up(short variable) {
    CDrillDown& analysis = Analysis->Module;
    const CDrillDown::DrillSet& steps = *analysis.GetDrillUps();
    const auto row = std::distance(steps.begin(), analysis.LookFor(variable, &steps));
    analysis.SetCurrentUpItem(static_cast<std::int16_t>(row));
    analysis.MoveBackToDrillDowns();
    Analysis->Run([&] { analysis.ReadAfterDrill(0); });
}

bool DrillDriver::CanShow(int button) const {
    return ButtonOf(button).IsEnabled(Analysis->Module);
}

void DrillDriver::Show(int button) {
    Analysis->Run([&] { (Analysis->Module.*ButtonOf(button).Operation)(nullptr); });
}

}  // namespace quillara
