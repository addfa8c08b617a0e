#include "workbench/command/DrillRun.h"

#include <algorithm>
#include <utility>

#include "workbench/command/CategoryLookup.h"
#include "workbench/command/DataReading.h"
#include "workbench/command/Dictionary.h"
#include "workbench/command/DrillDriver.h"
#include "workbench/command/Interruption.h"
#include "workbench/command/ProgressBar.h"
#include "workbench/command/QuotedText.h"
#include "workbench/command/StandardStreams.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/data/Errors.h"

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
    return lists.First.empty() && lists.Second.empty();
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

/// One drill from open data to its documents.
class DrillRun {
  public:
    DrillRun(const DrillOptions& options, const DataTable& table, CaseSettings settings, VariableChoice variables);

    OutputCollection Run();

  private:
    AnalysisServices Services();
    void ChooseVariables();
    void PressBoxes();
    void Categorize(const CategorizedVariable& categorized);
    void Take(const DrillStep& step);
    void GoDown(const std::string& name, const std::string& category);
    void GoUp(const std::string& name);
    void ShowResults();

    const DrillOptions& Options;
    const DataTable& Table;
    const VariableChoice Variables;
    ProgressBar Progress;
    OutputCollection Outputs;
    DrillDriver Driver;
};

DrillRun::DrillRun(const DrillOptions& options, const DataTable& table, CaseSettings settings, VariableChoice variables)
    : Options(options), Table(table), Variables(std::move(variables)), Driver(table, std::move(settings), Services()) {
    Outputs.FileName = table.FileName;
    Outputs.Cases = table.Cases;
    Outputs.Variables = static_cast<int>(table.Variables.size());
    Outputs.Settings = SettingTexts(options);
}

AnalysisServices DrillRun::Services() {
    AnalysisServices services;
    services.ShowMessage = [this](std::string_view text) {
        Progress.Clear();
        WriteMessage(text);
    };
    services.TakeSpreadsheet = [this](SpreadsheetDocument document) { Outputs.Add(std::move(document)); };
    services.BreakFlag = &InterruptFlag();
    if (ProgressBar::IsWanted()) {
        services.ProgressStarted = [this](std::string_view text, std::int32_t total) { Progress.Start(text, total); };
        services.ProgressAdvanced = [this](std::int32_t done) { Progress.Advance(done); };
    }
    return services;
}

OutputCollection DrillRun::Run() {
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
    return std::move(Outputs);
}

/// An empty list is never given: the analysis would only ask again.
void DrillRun::ChooseVariables() {
    if (!IsEmpty(Variables.Drill)) {
        Driver.ChooseDrillVariables(Variables.Drill);
    }
    if (!IsEmpty(Variables.Review)) {
        Driver.ChooseReviewVariables(Variables.Review);
    }
}

void DrillRun::PressBoxes() {
    const std::initializer_list<std::pair<bool, OptionBox>> boxes = {
        {Options.WeightedMoments && Options.Weight, OptionBox::WeightedMoments},
        {Options.Casewise, OptionBox::CasewiseDeletion},
        {Options.ReviewCasewise, OptionBox::ReviewCasewiseDeletion},
        {Options.NoCountMissing, OptionBox::CountMissing},
    };
    for (const auto& [isAskedFor, box] : boxes) {
        if (isAskedFor) {
            Driver.Press(box);
        }
    }
}

void DrillRun::Categorize(const CategorizedVariable& categorized) {
    const short variable = NumberOf(Table, categorized.Variable);
    if (std::ranges::find(Variables.Drill.Second, variable) == Variables.Drill.Second.end()) {
        throw DataError("The variable " + Quoted(categorized.Variable) +
                        " can't be categorized: it is no continuous drill variable; name it in --continuous.");
    }
    Driver.Categorize(variable, categorized.How);
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
    if (Driver.CanGoUp(variable)) {
        throw DataError("The variable " + Quoted(name) + " has been drilled on already; undo that step first (--up " +
                        name + ").");
    }
    if (!Driver.CanGoDown(variable)) {
        throw DataError("The variable " + Quoted(name) +
                        " can't be drilled on: it is no drill variable; name it in --categorical or --continuous.");
    }
    std::string chosen;
    Driver.Down(variable, [&](const CategoryList& list) {
        const std::size_t row = FindCategory(list, category);
        chosen = list.Rows[row].Name;
        return row;
    });
    Outputs.StepTexts.push_back("Down: " + name + " = " + chosen);
}

void DrillRun::GoUp(const std::string& name) {
    const short variable = NumberOf(Table, name);
    if (!Driver.CanGoUp(variable)) {
        throw DataError("There is no step on the variable " + Quoted(name) + " to undo.");
    }
    Driver.Up(variable);
    Outputs.StepTexts.push_back("Up: " + name);
}

void DrillRun::ShowResults() {
    for (const int button : Options.Results) {
        if (Driver.CanShow(button)) {
            Outputs.BeginCommand(button, static_cast<int>(Outputs.StepTexts.size()));
            Driver.Show(button);
        }
    }
}

}  // namespace

OutputCollection RunDrill(const DrillOptions& options) {
    const DataTable table = OpenData(options);
    CaseSettings settings = SettingsFor(table, options);
    VariableChoice variables = options.Names ? ChooseByName(table, *options.Names) : ChooseByContent(table);
    const InterruptibleWork work;
    OutputCollection outputs = DrillRun(options, table, std::move(settings), std::move(variables)).Run();
    InterruptibleWork::Finish();
    return outputs;
}

}  // namespace quillara
