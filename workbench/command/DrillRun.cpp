#include "workbench/command/DrillRun.h"

#include <algorithm>
#include <utility>

#include "resources/ControlIds.h"
#include "workbench/command/CategoryLookup.h"
#include "workbench/command/DataReading.h"
#include "workbench/command/Dictionary.h"
#include "workbench/command/DrillSession.h"
#include "workbench/command/Interruption.h"
#include "workbench/command/ProgressBar.h"
#include "workbench/command/QuotedText.h"
#include "workbench/command/ResultList.h"
#include "workbench/command/StandardStreams.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/data/Errors.h"
#include "workbench/documents/ResultDocument.h"

namespace quillara {
namespace {

short NumberOf(const DataTable& table, const std::string& name) {
    return static_cast<short>(table.IndexOf(name) + 1);
}

DataTable OpenData(const DrillOptions& options) {
    DataTable table = ReadDataWithProgress(options.File, options.Reading);
    if (options.DictionaryFile) {
        ApplyDictionary(table, *options.DictionaryFile);
    }
    return table;
}

std::size_t WeightNamed(const DataTable& table, const std::string& name) {
    const std::size_t index = table.IndexOf(name);
    if (table.Variables[index].Kind == ValueKind::Text) {
        throw DataError("The variable " + Quoted(name) + " can't be the weight: it holds texts.");
    }
    return index;
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

bool IsEmpty(const VariableLists& lists) {
    return lists.Categorical.empty() && lists.Continuous.empty();
}

bool IsAmong(const VariableLists& lists, short variable) {
    const auto holds = [variable](const std::vector<short>& list) {
        return std::ranges::find(list, variable) != list.end();
    };
    return holds(lists.Categorical) || holds(lists.Continuous);
}

/// What is in force for all results, for people.
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

/// One drill from open data to its documents and its subset.
class DrillRun {
  public:
    DrillRun(const DrillOptions& options, const DataTable& table, CaseSettings settings, VariableChoice variables);

    DrillOutcome Run();

  private:
    AnalysisServices Services();
    [[nodiscard]] std::vector<short> ReviewVariables(const std::vector<std::string>& names) const;
    void ChooseVariables();
    void PressBoxes();
    void PressBoxTypes();
    void Categorize(const CategorizedVariable& categorized);
    void Take(const DrillStep& step);
    void GoDown(const std::string& name, const std::string& category);
    void GoUp(const std::string& name);
    void ShowResults();
    void Show(int button);
    void SaveSubset();

    const DrillOptions& Options;
    const DataTable& Table;
    const VariableChoice Variables;
    std::vector<short> Horizontal;  // the variables of 3D histograms
    std::vector<short> Vertical;
    ProgressBar Progress;
    DrillOutcome Outcome;
    DrillSession Session;
};

DrillRun::DrillRun(const DrillOptions& options, const DataTable& table, CaseSettings settings, VariableChoice variables)
    : Options(options), Table(table), Variables(std::move(variables)), Session(table, std::move(settings), Services()) {
    OutputCollection& outputs = Outcome.Outputs;
    outputs.FileName = table.FileName;
    outputs.Cases = table.Cases;
    outputs.Variables = static_cast<int>(table.Variables.size());
    outputs.Settings = SettingTexts(options);
    if (const std::optional<VariablePairs>& pairs = options.Charts.Pairs) {
        Horizontal = ReviewVariables(pairs->Horizontal);
        Vertical = ReviewVariables(pairs->Vertical);
    }
}

std::vector<short> DrillRun::ReviewVariables(const std::vector<std::string>& names) const {
    std::vector<short> numbers;
    for (const std::string& name : names) {
        const short number = NumberOf(Table, name);
        if (!IsAmong(Variables.Review, number)) {
            throw DataError("The variable " + Quoted(name) + " can't be in a 3D histogram: it is no review variable; " +
                            "name it in --review-categorical or --review-continuous.");
        }
        numbers.push_back(number);
    }
    return numbers;
}

AnalysisServices DrillRun::Services() {
    AnalysisServices services;
    services.ShowMessage = [this](std::string_view text) {
        Progress.Clear();
        WriteMessage(text);
    };
    services.TakeDocument = [this](ResultDocument& document) {
        Outcome.Outputs.Add(document.Content(), document.Origin());
    };
    services.TakeData = [this](std::shared_ptr<const DataTable> table) { Outcome.Subset = std::move(table); };
    services.BreakFlag = &InterruptFlag();
    if (ProgressBar::IsWanted()) {
        services.ProgressStarted = [this](std::string_view text, std::int32_t total) { Progress.Start(text, total); };
        services.ProgressAdvanced = [this](std::int32_t done) { Progress.Advance(done); };
    }
    return services;
}

DrillOutcome DrillRun::Run() {
    ChooseVariables();
    PressBoxes();
    std::ranges::for_each(Options.Categorizations, [this](const auto& categorized) { Categorize(categorized); });
    for (const DrillStep& step : Options.Steps) {
        Take(step);
        if (Options.AfterEach) {
            ShowResults();
        }
    }
    if (!Options.AfterEach || Options.Steps.empty()) {
        ShowResults();
    }
    if (Options.SaveFile) {
        SaveSubset();
    }
    return std::move(Outcome);
}

/// An empty list is never given: the analysis would only ask again.
void DrillRun::ChooseVariables() {
    if (!IsEmpty(Variables.Drill)) {
        Session.ChooseDrillVariables(Variables.Drill);
    }
    if (!IsEmpty(Variables.Review)) {
        Session.ChooseReviewVariables(Variables.Review);
    }
}

void DrillRun::PressBoxes() {
    const std::initializer_list<std::pair<bool, int>> boxes = {
        {Options.WeightedMoments && Options.Weight, WeightedMomentsBox},
        {Options.Casewise, CasewiseBox},
        {Options.ReviewCasewise, ReviewCasewiseBox},
        {Options.NoCountMissing, CountMissingBox},
    };
    for (const auto& [isAskedFor, box] : boxes) {
        if (isAskedFor) {
            Session.Toggle(box);
        }
    }
    if (!Options.Charts.BoxTypes.empty()) {
        PressBoxTypes();
    }
}

/// One of them is checked from the start.
void DrillRun::PressBoxTypes() {
    for (const int box : {MedianQuartileRangeBox, MeanSEAndSDBox, MeanSD196TimesSDBox, MeanSE196TimesSEBox}) {
        const bool isChecked = box == MeanSEAndSDBox;
        if (Options.Charts.BoxTypes.contains(box) != isChecked) {
            Session.Toggle(box);
        }
    }
}

void DrillRun::Categorize(const CategorizedVariable& categorized) {
    const short variable = NumberOf(Table, categorized.Variable);
    if (std::ranges::find(Variables.Drill.Continuous, variable) == Variables.Drill.Continuous.end()) {
        throw DataError("The variable " + Quoted(categorized.Variable) +
                        " can't be categorized: it is no continuous drill variable; name it in --continuous.");
    }
    Session.Categorize(variable, categorized.How);
}

void DrillRun::Take(const DrillStep& step) {
    if (step.Category) {
        GoDown(step.Variable, *step.Category);
    } else {
        GoUp(step.Variable);
    }
}

void DrillRun::GoDown(const std::string& name, const std::string& category) {
    const short variable = NumberOf(Table, name);
    if (Session.CanGoUp(variable)) {
        throw DataError("The variable " + Quoted(name) + " has been drilled on already; undo that step first (--up " +
                        name + ").");
    }
    if (!Session.CanGoDown(variable)) {
        throw DataError("The variable " + Quoted(name) +
                        " can't be drilled on: it is no drill variable; name it in --categorical or --continuous.");
    }
    std::string chosen;
    Session.Down(variable, [&](const CategoryList& list) {
        const std::size_t row = FindCategory(list, category);
        chosen = list.Rows[row].Name;
        return row;
    });
    Outcome.Outputs.StepTexts.push_back("Down: " + name + " = " + chosen);
}

void DrillRun::GoUp(const std::string& name) {
    const short variable = NumberOf(Table, name);
    if (!Session.CanGoUp(variable)) {
        throw DataError("There is no step on the variable " + Quoted(name) + " to undo.");
    }
    Session.Up(variable);
    Outcome.Outputs.StepTexts.push_back("Up: " + name);
}

void DrillRun::ShowResults() {
    Outcome.Outputs.Step = static_cast<int>(Outcome.Outputs.StepTexts.size());
    for (const int button : Options.Results) {
        if (Session.CanPress(EnablingButton(button))) {
            Show(button);
        }
    }
}

void DrillRun::Show(int button) {
    if (button == Review3DHistogramsButton) {
        Session.Show3DHistograms(Horizontal, Vertical);
    } else if (button == EnablingButton(button)) {
        Session.Press(button);
    } else {
        Session.PressHidden(button);
    }
}

void DrillRun::SaveSubset() {
    const std::string nothingSaved = "Nothing was saved to " + Quoted(*Options.SaveFile);
    if (!Session.CanPress(SaveDataButton)) {
        throw DataError(nothingSaved + ": there are no drill variables; name some in --categorical or --continuous.");
    }
    Session.Press(SaveDataButton);
    if (Outcome.Subset == nullptr) {
        throw DataError(nothingSaved + ", for the reason told above.");
    }
}

}  // namespace

DrillOutcome RunDrill(const DrillOptions& options) {
    const DataTable table = OpenData(options);
    CaseSettings settings = SettingsFor(table, options);
    VariableChoice variables = options.Names ? ChooseByName(table, *options.Names) : ChooseByContent(table);
    const InterruptibleWork work;
    DrillOutcome outcome = DrillRun(options, table, std::move(settings), std::move(variables)).Run();
    InterruptibleWork::Finish();
    return outcome;
}

}  // namespace quillara
