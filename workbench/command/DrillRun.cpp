#include "workbench/command/DrillRun.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "resources/ControlIds.h"
#include "workbench/command/DrillData.h"
#include "workbench/command/DrillSession.h"
#include "workbench/command/GroupedSteps.h"
#include "workbench/command/HostResults.h"
#include "workbench/command/LeftOutResults.h"
#include "workbench/command/ProgressBar.h"
#include "workbench/command/ResultList.h"
#include "workbench/command/ReviewPairs.h"
#include "workbench/command/StandardStreams.h"
#include "workbench/command/StepTaking.h"
#include "workbench/command/SubsetColumns.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/documents/ResultNames.h"
#include "workbench/formats/OddCases.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/recording/SessionRecorder.h"
#include "workbench/scripting/CategorizationInData.h"
#include "workbench/scripting/CategoryLookup.h"
#include "workbench/scripting/ListChecks.h"

namespace quillara {
namespace {

short NumberOf(const DataTable& table, const std::string& name) {
    return static_cast<short>(table.IndexOf(name) + 1);
}

bool IsEmpty(const VariableLists& lists) {
    return lists.Categorical.empty() && lists.Continuous.empty();
}

bool IsAmong(const VariableChoice& chosen, short variable) {
    const auto holds = [variable](const std::vector<short>& list) {
        return std::ranges::find(list, variable) != list.end();
    };
    return holds(chosen.Drill.Categorical) || holds(chosen.Drill.Continuous) || holds(chosen.Review.Categorical) ||
           holds(chosen.Review.Continuous);
}

/// What a script of the same drill begins with.
ScriptOpening OpeningOf(const DrillOptions& options) {
    return {options.File,
            options.Reading,
            options.Valid,
            options.DictionaryFile,
            options.Derived,
            options.Formula.value_or(""),
            options.Weight.value_or("")};
}

/// One drill from open data to its documents and its subset.
class DrillRun {
  public:
    DrillRun(const DrillOptions& options, const DataTable& table, CaseSettings settings, VariableChoice variables);

    DrillOutcome Run();

  private:
    AnalysisServices Services();
    void Take(ResultDocument& document);
    void Hear(const Remark& remark);
    void Notice(const Remark& remark);
    void ChooseVariables();
    void PressBoxes();
    void PressBoxTypes();
    void Categorize(const CategorizedVariable& categorized);
    void TakeSteps();
    void ShowResults();
    void ShowEach();
    [[nodiscard]] bool HasBoxesOfGroups() const;
    [[nodiscard]] bool Applies(int button);
    [[nodiscard]] std::optional<LeftOutBecause> ShowOrTellWhyNot(int button);
    void Show(int button);
    void ShowAllPairs();
    void TellWhatIsLeftOut();
    void SaveSubset();
    void PressSave();

    const DrillOptions& Options;
    const DataTable& Table;
    const VariableChoice Variables;
    const std::optional<std::size_t> Weight;
    const std::vector<short> Columns;  // of the subset
    std::optional<PairedLists> Pairs;  // of 3D histograms; nothing: all
    int EarlierPairs = 0;  // documents of the same request that other presses of the button have made
    int Messages = 0;
    bool IsUnknownToScript = false;  // what the analysis remarks now
    ProgressBar Progress;
    LeftOutResults LeftOut;
    SessionRecorder Recorder;
    DrillOutcome Outcome;
    DrillSession Session;
    StepTaking Steps;
    HostResults OfHost;
};

DrillRun::DrillRun(const DrillOptions& options, const DataTable& table, CaseSettings settings, VariableChoice variables)
    : Options(options),
      Table(table),
      Variables(std::move(variables)),
      Weight(settings.Weight),
      Columns(SubsetColumns(table, options.SavedNames, Variables, Weight)),
      Recorder(OpeningOf(options)),
      Session(table, std::move(settings), Services()),
      Steps(Session, table, Outcome.Outputs, [this](const Remark& remark) { Notice(remark); }),
      OfHost(Session, table, Outcome.Outputs, options.RecordFile ? &Recorder : nullptr) {
    OutputCollection& outputs = Outcome.Outputs;
    outputs.FileName = table.FileName;
    outputs.Cases = table.Cases;
    outputs.Variables = static_cast<int>(table.Variables.size());
    outputs.Settings = SettingTexts(options);
    if (options.Charts.Pairs) {
        Pairs = NamedPairs(Table, Variables.Review, *options.Charts.Pairs);
    }
}

AnalysisServices DrillRun::Services() {
    AnalysisServices services;
    services.ShowMessage = [this](std::string_view text) {
        ++Messages;
        Progress.Clear();
        WriteMessage(text);
    };
    services.TakeDocument = [this](ResultDocument& document) { Take(document); };
    services.HearRemark = [this](const Remark& remark) { IsUnknownToScript ? Notice(remark) : Hear(remark); };
    services.Recorder = Options.RecordFile ? &Recorder : nullptr;
    services.TakeData = [this](std::shared_ptr<const DataTable> table) { Outcome.Subset = std::move(table); };
    if (ProgressBar::IsWanted()) {
        services.ProgressStarted = [this](std::string_view text, std::int32_t total) { Progress.Start(text, total); };
        services.ProgressAdvanced = [this](std::int32_t done) { Progress.Advance(done); };
    }
    return services;
}

void DrillRun::Take(ResultDocument& document) {
    DocumentOrigin origin = document.Origin();
    origin.Sequence += EarlierPairs;
    Outcome.Outputs.Add(document.Content(), origin);
}

/// One of this program, which a script of the same steps wouldn't make, so that it says it.
void DrillRun::Notice(const Remark& remark) {
    if (Options.RecordFile) {
        Recorder.RecordRemark(remark);
    }
    Hear(remark);
}

/// Once each; on standard error as it comes.
void DrillRun::Hear(const Remark& remark) {
    if (Outcome.Outputs.Noticed.Add(remark) && !Options.Quiet) {
        Progress.Clear();
        WriteMessage(remark.Line());
    }
}

DrillOutcome DrillRun::Run() {
    ChooseVariables();
    PressBoxes();
    std::ranges::for_each(Options.Categorizations, [this](const auto& categorized) { Categorize(categorized); });
    Outcome.Outputs.Selected = CountSelected(Session.Analysed());
    Outcome.Outputs.ShowsAllStates = Options.After == ShownAfter::All;
    if (Outcome.Outputs.ShowsAllStates) {
        ShowResults();
    }
    TakeSteps();
    const bool showsInGroups = !Options.Groups.Each.empty();
    const bool showsLast =
        Options.After == ShownAfter::Last || (Options.After == ShownAfter::Each && Outcome.Outputs.Steps.empty());
    if (!showsInGroups && showsLast) {
        ShowResults();
    }
    if (showsInGroups) {
        ShowEach();
    }
    TellWhatIsLeftOut();
    Outcome.Script = Recorder.Text();
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
        const bool isText = Table.Variables[static_cast<std::size_t>(variable) - 1].Kind == ValueKind::Text;
        throw DataError("The variable " + Quoted(categorized.Variable) + " can't be categorized: it " +
                        (isText ? "holds texts." : "is no continuous drill variable; name it in --continuous."));
    }
    IsUnknownToScript = true;
    NoticeCategorization(Session.Analysed(), categorized.How, Table.Variables[static_cast<std::size_t>(variable) - 1]);
    IsUnknownToScript = false;
    Session.Categorize(variable, categorized.How);
}

void DrillRun::TakeSteps() {
    for (const DrillStep& step : Options.Steps) {
        if (!Steps.Take(step, Options.SkipImpossible)) {
            continue;
        }
        if (Options.After != ShownAfter::Last) {
            ShowResults();
        }
    }
}

void DrillRun::ShowResults() {
    Outcome.Outputs.Step = static_cast<int>(Outcome.Outputs.Steps.size());
    LeftOut.ShowAt(Outcome.Outputs.Step);
    for (std::size_t place = 0; place < Options.Results.size(); ++place) {
        const int button = Options.Results[place];
        const std::optional<LeftOutBecause> reason = ShowOrTellWhyNot(button);
        if (reason && place >= Options.DefaultResults) {
            LeftOut.LeaveOut(button, *reason);
        }
    }
    OfHost.ShowCrosses(Options, Variables);
    if (!HasBoxesOfGroups()) {
        OfHost.ShowBoxes(Options, Variables);
    }
}

/// Whether the boxes of box plots are those of the groups themselves, which stand side by side once.
bool DrillRun::HasBoxesOfGroups() const {
    const GroupOptions& groups = Options.Groups;
    return groups.By && std::ranges::find(groups.Each, *groups.By) != groups.Each.end();
}

/// Full documents within the categories are for who names some.
void DrillRun::ShowEach() {
    if (HasBoxesOfGroups()) {
        Outcome.Outputs.Step = static_cast<int>(Outcome.Outputs.Steps.size());
        OfHost.ShowBoxes(Options, Variables);
    }
    const bool hasGraphs = !Options.Groups.Crosses.empty() || (!Options.Groups.Boxes.empty() && !HasBoxesOfGroups());
    const bool showsAll = !Options.Results.empty() || hasGraphs;
    OfHost.ShowEach(Options, showsAll ? [this] { ShowResults(); } : std::function<void()>());
}

/// Nothing where there is a document with cases, or a message.
std::optional<LeftOutBecause> DrillRun::ShowOrTellWhyNot(int button) {
    if (IsOfHost(button)) {
        return OfHost.Show(button) ? std::nullopt : std::optional(LeftOutBecause::DoesNotApply);
    }
    if (!Applies(button)) {
        return LeftOutBecause::DoesNotApply;
    }
    const std::vector<OutputEntry>& entries = Outcome.Outputs.Entries;
    const std::size_t documents = entries.size();
    const int messages = Messages;
    Show(button);
    if (entries.size() == documents) {
        return Messages > messages ? std::nullopt : std::optional(LeftOutBecause::HasNothing);
    }
    const auto* graph = std::get_if<GraphDocument>(&entries.back().Content);
    return graph != nullptr && graph->About.IsEmptied ? std::optional(LeftOutBecause::StepOnMissing) : std::nullopt;
}

/// A 3D histogram needs two variables, which the button doesn't know.
bool DrillRun::Applies(int button) {
    const bool hasPair = Pairs || button != Review3DHistogramsButton || PairsOf(Variables.Review).Count > 0;
    return hasPair && Session.CanPress(EnablingButton(button));
}

void DrillRun::Show(int button) {
    if (button == Review3DHistogramsButton && Pairs) {
        Session.Show3DHistograms(Pairs->Horizontal, Pairs->Vertical);
    } else if (button == Review3DHistogramsButton) {
        ShowAllPairs();
    } else if (button == EnablingButton(button)) {
        Session.Press(button);
    } else {
        Session.PressHidden(button);
    }
}

void DrillRun::ShowAllPairs() {
    for (const auto& [horizontal, vertical] : PairsOf(Variables.Review).Lists) {
        Session.Show3DHistograms(horizontal, vertical);
        EarlierPairs += static_cast<int>(vertical.size());
    }
    EarlierPairs = 0;
}

/// For the user, who named them.
void DrillRun::TellWhatIsLeftOut() {
    std::ranges::for_each(LeftOut.AsRemarks(), [this](const Remark& remark) { Notice(remark); });
    if (IsEmpty(Variables.Drill) && IsEmpty(Variables.Review)) {
        Notice({"no-variable", "No variable is chosen, so that nothing is shown.",
                "Name some in --categorical and --continuous."});
    }
    const std::size_t pairs = PairsOf(Variables.Review).Count;
    const bool showsPairs = std::ranges::find(Options.Results, Review3DHistogramsButton) != Options.Results.end();
    if (showsPairs && !Pairs && pairs > AllPairs::Most) {
        Notice({"pairs-left-out",
                "\"hist3d\" shows the first " + std::to_string(AllPairs::Most) + " of " + std::to_string(pairs) +
                    " pairs of review variables.",
                "Name others in --hist3d."});
    }
}

/// The analysis saves its own variables. Others become review variables now that all results are shown; what was saved
/// before has brought the counts up to date.
void DrillRun::SaveSubset() {
    if (!Session.CanPress(SaveDataButton)) {
        throw DataError("Nothing was saved to " + Quoted(*Options.SaveFile) +
                        ": there are no drill variables; name some in --categorical or --continuous.");
    }
    PressSave();
    VariableLists reviews = Variables.Review;
    std::ranges::copy_if(Columns, std::back_inserter(reviews.Continuous),
                         [this](short column) { return !IsAmong(Variables, column); });
    if (reviews.Continuous.size() > Variables.Review.Continuous.size()) {
        Session.ChooseReviewVariables(reviews);
        PressSave();
    }
    Outcome.Subset = Arranged(Outcome.Subset, Table, Columns, Weight);
    for (std::size_t index = 0; !Options.SavedNames && index < Table.Variables.size(); ++index) {
        if (std::ranges::find(Columns, static_cast<short>(index + 1)) == Columns.end()) {
            Outcome.NotSaved.push_back(Table.Variables[index].Name);
        }
    }
}

void DrillRun::PressSave() {
    Outcome.Subset = nullptr;
    Session.Press(SaveDataButton);
    if (Outcome.Subset == nullptr) {
        throw DataError("Nothing was saved to " + Quoted(*Options.SaveFile) + ": no case is left.");
    }
}

/// Those that are named or go by their content, and those of categorizations and steps.
VariableChoice VariablesFor(const DataTable& table, const DrillOptions& options) {
    VariableChoice variables = options.Names ? ChooseByName(table, *options.Names) : ChooseByContent(table);
    std::vector<std::string> categorized;
    std::ranges::transform(options.Categorizations, std::back_inserter(categorized), &CategorizedVariable::Variable);
    AddCategorized(table, categorized, options.Names.has_value(), variables.Drill);
    std::vector<std::string> drilled = options.Groups.Each;
    for (const DrillStep& step : options.Steps) {
        if (step.Category) {
            drilled.push_back(step.Variable);
        }
    }
    AddDrilled(table, drilled, variables.Drill);
    return variables;
}

}  // namespace

DrillOutcome RunDrill(const DrillOptions& asked) {
    DrillOptions options = asked;
    std::vector<Remark> notices;
    DataTable table = OpenData(options, notices);
    GroupSteps(table, options, VariablesFor(table, options));
    CaseSettings settings = SettingsFor(table, options);
    DropObeyed(notices, settings.Selection);
    settings.Notices.insert(settings.Notices.begin(), notices.begin(), notices.end());
    VariableChoice variables = VariablesFor(table, options);
    if (const std::optional<Remark> left = options.Names ? std::nullopt : RemarkOnLeftOut(table, variables)) {
        settings.Notices.push_back(*left);
    }
    for (CategorizedVariable& categorized : options.Categorizations) {
        const Variable& variable = table.Variables[table.IndexOf(categorized.Variable)];
        categorized.How = InData(categorized.How, variable, settings.Selection);
    }
    for (const VariableLists& lists : {variables.Drill, variables.Review}) {
        CheckTexts(table, {lists.Categorical, lists.Continuous}, "in --categorical");
    }
    return DrillRun(options, table, std::move(settings), std::move(variables)).Run();
}

}  // namespace quillara
