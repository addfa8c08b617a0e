#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>

#include "engine/Drill.h"
#include "host/AnalysisSupport.h"
#include "host/Commons.h"

namespace drilldown {
class CountMemory;
}

class COutDocument;
class COutputTracker;
class [[gnu::visibility("default")]] CDrillDown;  // hosts call its operations

/// The analysis object: the one object of the module, which owns all state of one exploration. Its operations stand in
/// families, each defined in a file of its own:
///
/// - lifecycle: creation, allocation for an open table, reset (engine/ModuleEntry.cpp, engine/Lifecycle.cpp)
/// - accessors and flags, all here
/// - records: reading and writing the records of the three sets (engine/RecordAccess.cpp)
/// - names: what categories and variables are shown as (engine/DisplayNames.cpp)
/// - variable lists: choosing drill and review variables (engine/VariableSelection.cpp)
/// - case decisions: reading a case, its weight, missing data (engine/CaseDecisions.cpp)
/// - scans: the first pass over newly chosen variables (engine/VariableScans.cpp)
/// - intervals: building and counting intervals (engine/IntervalCounts.cpp)
/// - drill passes: what the remaining cases look like (engine/DrillPasses.cpp)
/// - drill filter: whether a case remains (engine/DrillFilter.cpp)
/// - drill moves: one step down or up (navigation/DrillMoves.cpp)
/// - reordering: another order of a set (navigation/Reordering.cpp)
/// - list presentation: what the lists of the dialogs show (navigation/ListPresentation.cpp)
/// - captions (results/texts/SelectionText.cpp) and tables (results/tables)
/// - graphs: charts, brushing, plots of the host (results/graphs)
/// - output: stand-alone documents and their updates (automation/OutputOperations.cpp)
///
/// Operations give 1 for success and 0 for failure or cancel unless they say otherwise. Failures are shown through
/// dsplst; a cancel is silent. Flags are 0 or 1 and compared with 1. Used from the host's user-interface thread only.
class CDrillDown : public CAnalysisSupport {
  public:
    using DrillSet = std::set<Drill>;
    using CategorySetType = std::set<Categories>;

    // Lifecycle - engine/ModuleEntry.cpp

    /// An analysis without variables; the host runs its sequence before it is used.
    explicit CDrillDown(CAnalysisDoc* document);
    ~CDrillDown() override;

    /// Opens the startup dialog. Gives -1 when that succeeds, else 0.
    int StartAnalysis();

    // Overrides of the host's slots - engine/ModuleEntry.cpp

    int InitializeAfterFileChanged() override;
    void Initialize() override;
    bool ForwardSequence(int from, int to) const override;
    const ModuleInstance* GetLibInstance() override;
    int GetAnalysisID() override;
    std::string GetAnalysisName() const override;
    bool BeforeRouteOutput(IDispatch* document) override;
    void BeforeClose() override;
    bool FindStepConditions(std::vector<CaseCondition>& conditions) override;  // engine/DrillFilter.cpp

    // Lifecycle - engine/Lifecycle.cpp

    /// Writes the defaults of all plain members; allocates nothing.
    void InitMembers();
    /// Frees the variable arrays and nulls them.
    void ReleaseMembers();
    /// Binds the shared structures and makes the arrays and the three empty sets for the open table. Without memory
    /// it says so, leaves no arrays and gives 0.
    int Init();
    /// Makes the analysis like a new one for the table that is open now. Gives the result of Init.
    int ResetMembers();
    /// Starts the progress display; one that runs is ended first.
    void tdstar(int total, const char* text);
    /// Ends the progress display if it runs.
    void ddstop();

    // Accessors and flags

    std::int16_t GetNoCategorical() const { return NoCategorical; }
    std::int16_t GetNoContinuous() const { return NoContinuous; }
    std::int16_t* GetCategorical() const { return Categorical; }
    std::int16_t* GetContinuous() const { return Continuous; }
    std::int16_t GetNoRVCategorical() const { return NoRVCategorical; }
    std::int16_t GetNoRVContinuous() const { return NoRVContinuous; }
    std::int16_t* GetRVCategorical() const { return RVCategorical; }
    std::int16_t* GetRVContinuous() const { return RVContinuous; }
    std::int16_t GetWM() const { return WeightedMoments; }
    std::int16_t SetWM(std::int16_t flag) { return WeightedMoments = flag; }
    std::int16_t ChangeWM() { return Toggle(WeightedMoments); }
    std::int16_t GetMD() const { return CasewiseDeletionOfMD; }
    std::int16_t SetMD(std::int16_t flag) { return CasewiseDeletionOfMD = flag; }
    std::int16_t ChangeMD() { return Toggle(CasewiseDeletionOfMD); }
    std::int16_t GetRVMD() const { return RVCasewiseDeletionOfMD; }
    std::int16_t SetRVMD(std::int16_t flag) { return RVCasewiseDeletionOfMD = flag; }
    std::int16_t ChangeRVMD() { return Toggle(RVCasewiseDeletionOfMD); }
    std::int16_t GetCountMD() const { return CountMD; }
    std::int16_t SetCountMD(std::int16_t flag) { return CountMD = flag; }
    std::int16_t ChangeCountMD() { return Toggle(CountMD); }
    std::int16_t GetCurrentDown() const { return CurrentDown; }
    std::int16_t SetCurrentDown(std::int16_t var) { return CurrentDown = var; }
    std::int16_t GetCurrentUp() const { return CurrentUp; }
    std::int16_t SetCurrentUp(std::int16_t var) { return CurrentUp = var; }
    std::int32_t GetSelected() const { return Selected; }
    std::int32_t SetSelected(std::int32_t row) { return Selected = row; }
    /// The sets exist once Init has succeeded; the accessors of the sets may not be called before.
    DrillSet* GetDrillDowns() const { return DrillDowns; }
    DrillSet* GetDrillUps() const { return DrillUps; }
    DrillSet* GetReviews() const { return Reviews; }
    int GetDrillDownsSize() const { return static_cast<int>(DrillDowns->size()); }
    int GetDrillUpsSize() const { return static_cast<int>(DrillUps->size()); }
    int GetDrillReviewsSize() const { return static_cast<int>(Reviews->size()); }
    /// Cases that entered the last pass; not a number of variables, despite the name.
    std::int32_t GetValidVar() const { return ValidVar; }

    // Records - engine/RecordAccess.cpp. "By number" finds the first record with that VarNo, "current" the record that
    // CurrentDown names, in DrillDowns; the Review twins look in Reviews. Where no result stands for a record that
    // isn't there, the caller sees to it that it is; called all the same, the operation changes nothing.

    int SetDrillCategories(std::int16_t var, double value, std::int16_t kind, double weight);
    int SetReviewCategories(std::int16_t var, double value, std::int16_t kind, double weight);
    /// Stores the four statistics and sets ValidCount to 0.
    int SetDrillDescriptives(std::int16_t var, double min, double max, double mean, double sumSquares);
    int SetReviewDescriptives(std::int16_t var, double min, double max, double mean, double sumSquares);
    int SetMissingCount(std::int16_t var, std::int32_t missing, double missingWeight, std::int32_t valid,
                        double validWeight);
    int SetReviewMissingCount(std::int16_t var, std::int32_t missing, double missingWeight, std::int32_t valid,
                              double validWeight);
    /// Isset := 1 for Methods 0 and 4, else 0, on every record with that number.
    int SetCategoriesIsset(int var);
    int SetReviewCategoriesIsset(int var);
    int SetIsset(int var, int value);
    int SetAllIsset(int value);
    /// Isset of the current record; -1 without one.
    int GetCurrentIsset() const;
    /// Categories of the current record; of an empty set when there is none.
    CategorySetType* GetCurrentCategories();
    const CategorySetType* GetCurrentCategories() const;
    const CategorySetType* GetDrillCategories(std::int16_t var) const;
    /// End of DrillUps; usable as an end mark only.
    DrillSet::const_iterator GetLastDrillUpCategories() const;
    /// Boundaries of the current record; null without one.
    const double* GetUserInterv() const;
    /// Stores the user's boundaries in the current record; at most UserBoundaryRoom of them.
    int SetUserIntervals(const double* values, int n);
    int GetCurrentNU() const;
    /// MissingWeight of the current record.
    double GetCurrentMCount() const;
    /// CurrentDown if DrillDowns has it, else -1.
    std::int16_t GetCurrentDrillDown() const;
    /// CurrentUp if DrillUps has it, else 0 and not -1.
    std::int16_t GetCurrentDrillUp() const;
    std::string GetCurrentDrillUpName() const;
    std::string GetCurrentVariableName() const;
    std::int16_t GetCurrentVariableType() const;
    /// Method of the current record; -1 without one.
    int GetCurrentMethod() const;
    /// Method of the current record, and its parameters (count is ExactCount for Method 1, else NeatCount); -1
    /// without one, and the outputs stay.
    int GetDrillMethod(int& type, int& count, int& atMin, double& step, double& start) const;
    /// 1, and the range of the current record; -1 without one.
    int GetDrillMinMax(double& min, double& max) const;
    /// Number of records in DrillDowns with VarType 1.
    int GetDrillDownsContSize() const;
    /// Changes nothing and gives 1; part of the interface.
    int SetCurrentCategories(int, int, int, double, double);
    /// Selected := index among all categories of the item-th non-empty category of the current record; the size of the
    /// set when there are fewer; 0 for an empty set. Gives the new Selected. Not the way to prepare a drill:
    /// MoveToDrillUps reads Selected as a row of the list of non-empty categories.
    std::int32_t SetSelectedItem(std::int32_t item);
    /// CurrentUp := VarNo at that place of DrillUps, -1 behind the end. Gives it.
    std::int16_t SetCurrentUpItem(std::int16_t item);
    /// Place of CurrentUp in DrillUps. When it isn't there CurrentUp becomes -1, and the result is -1.
    std::int16_t GetCurrentUpItem();
    /// 0 when a step on Missing exists in DrillUps, else 1.
    int NoMissingDrill() const;
    DrillSet::const_iterator LookFor(std::int16_t var, const DrillSet* set) const;
    /// The same as a record that can be changed; null when there is none.
    static Drill* FindRecord(const DrillSet* set, int var);

    // Names - engine/DisplayNames.cpp

    /// Gives each category of a record the name of its value: label, special format, or number. 0 when the work
    /// buffer can't be had; the names then stay.
    int SetCategoriesName(std::int16_t var);
    int SetReviewCategoriesName(std::int16_t var);
    /// Text of a value in `buffer` (9 bytes, zeroed) from *position on. Gives 1 when it is the value's label (8 bytes
    /// padded with blanks, position grows by 8), else 0.
    int ValueToLabelText(std::int16_t var, double value, int* position, char* buffer);
    /// Display name of a variable: short name, trimmed, key expanded, formatting stripped.
    std::string VariableDisplayName(std::int16_t var);

    // Variable lists - engine/VariableSelection.cpp

    /// Lets the user choose the drill variables, which starts the exploration again from nothing and drops the review
    /// variables, and scans them. Gives the dialog's result, or 0 without memory.
    int SetDDNVariable(HWND dialog, unsigned short mode, int lowest1, int highest1, int lowest2, int highest2,
                       int highestTotal);
    /// Lets the user choose the review variables and scans them under the present steps, which stay. Gives the
    /// dialog's result, or 0 without memory.
    int SetRVVariable(HWND dialog, unsigned short mode, int lowest, int highest);
    /// 1 when the variable stands in any of the four lists.
    std::int16_t SelectedVariable(int var) const;
    /// 1 when the variable stands in one of the two categorical lists.
    std::int16_t IsCategoricalVariable(int var) const;

    // Case decisions - engine/CaseDecisions.cpp

    /// Reads one case with its weight and name into the shared structures. Gives 0: use it, 1: skip it, 2: stop.
    int ReadCase(int caseNumber, double* values);
    /// Weight of the case read last: 1.0 when no weight is in force, the weight itself with WeightedMoments 1, else
    /// the weight rounded to a whole number, halves away from zero. The argument plays no part.
    double DealWithWeights(unsigned short) const;
    /// 1 when any variable of the drill lists, drilled on or not, is missing in a case buffer.
    int SetMissingData(const double* values);
    /// The same for the review lists.
    int MDReviews(const double* values);

    // Scans - engine/VariableScans.cpp. Callers give 0.

    int ReadDDNV(unsigned short weightArgument);
    int ReadRVV(unsigned short weightArgument);

    // Intervals - engine/IntervalCounts.cpp

    /// Neat intervals for every drill-down record with a Method other than 0, also another interval method.
    int SetNeatIntervals();
    /// Neat intervals for every review record with Method 2.
    int SetReviewsIntervals();
    /// Rebuilds the categories of all continuous records by their Method.
    int SetContinuousIntervals();
    /// Counts the continuous drill variables of all cases into their intervals.
    int FillNeatIntervals();
    /// Counts the continuous drill-down records of the remaining cases without missing data into their intervals.
    int FillContinuousIntervals();
    int AddCategories(double value, std::int16_t var, double weight);
    /// ValidCount := NumOfCases on each drill-down record.
    int SetNumOfCases();

    // Drill passes - engine/DrillPasses.cpp. Callers give 0.

    /// Recomputes statistics and categories of all drill-down and review records from the cases that remain.
    int ReadAfterDrill(unsigned short weightArgument);
    /// Recounts the categories of all drill-down and review records. Statistics stay.
    int ReadBeforeDrill(unsigned short weightArgument);
    /// First step of every result: brings the records up to date after a change of settings, and after a pass that had
    /// no memory.
    void BringUpToDate();
    /// The same within a result and a recount: after a change of settings only.
    void ReadIfChanged();

    // Drill filter - engine/DrillFilter.cpp

    /// 0 when a case remains under all steps, 1 when one of them drops it.
    int HasBeenDrilled(const double* values);

    // Drill moves - navigation/DrillMoves.cpp

    /// Moves the current drill-down record to the head of DrillUps; row Selected of its list of non-empty categories is
    /// the category kept. The record must exist. Always 1.
    int MoveToDrillUps();
    /// Moves the current drill-up record to the head of DrillDowns. The record must exist. Always 1.
    int MoveBackToDrillDowns();

    // Reordering - navigation/Reordering.cpp. A request has one entry for each record of the set, in its present order:
    // the record's new place, or -1 for a record that keeps its place among those not placed, behind the placed ones.
    // The places given are 0 .. placed - 1, each once; a record whose place is taken is lost. Always 1.

    int ReorderDrillDowns(const std::int32_t* request, int entries, int placed);
    int ReorderDrillUps(const std::int32_t* request, int entries, int placed);

    // List presentation - navigation/ListPresentation.cpp. Gives 0, and changes nothing, without memory.

    /// Fills the two lists of the startup dialog.
    int RefreshListBoxes(HWND dialog);
    /// Fills the two lists of the drill order dialog: records without a place in the request on the left, the others
    /// at their places on the right.
    int LeftAndRight(HWND dialog, const std::int32_t* request, int entries);

    // Captions - results/texts/SelectionText.cpp

    /// Caption of the present subset: the count line and one clause per step, newest first, as one text or its key.
    std::string DrillString();
    /// The same with display names of the variables in place of raw fields.
    std::string ScatterDrillString();

    // Tables - results/tables. Windows play no part. Gives 0 when memory or cases are missing.

    /// The steps taken - results/tables/Summary.cpp
    std::int16_t DDNSummary(HWND window);
    /// 1 when a category of a drill-down record has a long label; 0 for a continuous one -
    /// results/tables/LongLabels.cpp
    std::int16_t LongDescription(std::int16_t var, std::int16_t type);
    std::int16_t LongDescriptionReviews(std::int16_t var, std::int16_t type);
    /// Descriptives - results/tables/Descriptives.cpp
    std::int16_t DDNDescriptive(HWND window);
    std::int16_t RVSummary(HWND window);
    /// Frequency tables - results/tables/Frequencies.cpp
    std::int16_t DDNFrequency(HWND window);
    std::int16_t RVFrequency(HWND window);
    /// The remaining cases as a new table of the host - results/tables/RawData.cpp
    std::int16_t DDNSaveData(HWND window);
    /// The remaining cases as one spreadsheet - results/tables/DataSheet.cpp
    std::int16_t DDNDatasheet(HWND window);

    // Graphs - results/graphs. Windows and first arguments of type short play no part. 1 when the walk was finished, 0
    // when memory ran out; what becomes of a single chart plays no part.

    /// A chart for each variable of the set - results/graphs/Histograms.cpp
    std::int16_t DDNHistograms(HWND window);
    std::int16_t RVHistograms(HWND window);
    /// The histogram of the current variable for picking bars - results/graphs/BrushingGraph.cpp
    std::int16_t DDNGraphForBrushing(HWND window);
    /// The document of the brushing graph, the last one made; false when there is none.
    bool GetActiveChartInfo(COutDocument** document);
    /// One cycle of picking a bar - results/graphs/Brushing.cpp. 1: a bar or drill up was picked; 0: no graph, or the
    /// user has left; -1: the pick can't be used. `item` is the bar, `action` 0 for down and 1 for up.
    std::int16_t DDNBrushing(int* item, int* action);
    /// Looks for the brushing graph and does nothing with it. 0 when the host's lists can't be read.
    std::int16_t DDNCloseBrushing(HWND window);
    /// All variables of the set in one chart, in percent; 0 also when a variable has no cases -
    /// results/graphs/StackedPlots.cpp
    int DDNStackedplots(short, HWND window);
    int RVStackedplots(short, HWND window);
    /// A pie for each variable of the set - results/graphs/PieCharts.cpp
    int DDNPiecharts(short, HWND window);
    int RVPiecharts(short, HWND window);
    /// Plots that the host computes from the remaining cases - results/graphs/ReviewPlots.cpp
    std::int16_t RVBoxWhiker(HWND window);
    std::int16_t RVScatterPlot(HWND window);
    int RV3DHistograms(short, HWND window);

    // Output - automation/OutputOperations.cpp

    /// Runs again the commands of all stand-alone documents, which are replaced in place. Gives 1; 0, and does nothing,
    /// with StandAloneResults 0. The argument plays no part.
    std::int32_t AutoUpdate(std::uint16_t);
    /// Whether a document of that key stands alone.
    bool OutputExists(unsigned outputId, unsigned outputSeq) const;
    /// The next document takes this key in place of its own; a part that is 0 counts for nothing.
    void SetNextOutputID(unsigned outputId, unsigned outputSeq);
    /// Hides and forgets the stand-alone document of that key, if there is one.
    void HideOutput(unsigned outputId, unsigned outputSeq);

    // State. The dialogs read and toggle the options directly.

    std::int32_t StandAloneResults = 0;  ///< result documents stand alone and are updated after each step
    COutputTracker* OutputTracker = nullptr;  ///< the tracker of stand-alone documents; null where there is none
    std::int16_t DataChanged = 0;  ///< a setting that affects the counts has changed since they were read
    std::int16_t PlotMedianQuartileRange = 0;
    std::int16_t PlotMeanSEAndSD = 1;
    std::int16_t PlotMeanSD196TimesSD = 0;
    std::int16_t PlotMeanSE196TimesSE = 0;
    std::int16_t NoRVCategorical = 0;  ///< entries of RVCategorical
    std::int16_t* RVCategorical = nullptr;  ///< categorical review variables; host memory, as all lists here
    std::int16_t NoRVContinuous = 0;  ///< entries of RVContinuous
    std::int16_t* RVContinuous = nullptr;  ///< continuous review variables
    std::int16_t NoCategorical = 0;  ///< entries of Categorical
    std::int16_t NoContinuous = 0;  ///< entries of Continuous
    std::int16_t* Categorical = nullptr;  ///< categorical drill variables
    std::int16_t* Continuous = nullptr;  ///< continuous drill variables
    std::int16_t WeightedMoments = 0;  ///< 1: fractional weights count as they are
    std::int16_t CasewiseDeletionOfMD = 0;  ///< 1: a case missing in one drill variable is missing in all
    std::int16_t RVCasewiseDeletionOfMD = 0;  ///< the same for the review variables
    std::int16_t CountMD = 1;  ///< 1: missing data is a row of its own
    std::int32_t ValidVar = 0;  ///< cases that entered the last pass
    std::int32_t NumOfCases = 0;  ///< stays 0; SetNumOfCases copies it
    bool ProgressOn = false;  ///< the progress display runs
    std::int16_t CurrentDown = -1;  ///< VarNo in focus among the drill-downs, -1: none
    std::int16_t CurrentUp = -1;  ///< VarNo in focus among the drill-ups, -1: none
    std::int32_t Selected = -1;  ///< row chosen in the category list, -1: none
    std::int16_t* FirstVarList = nullptr;  ///< horizontal variables of the 3D histograms
    std::int16_t* SecondVarList = nullptr;  ///< vertical variables of the 3D histograms
    std::int16_t* AllReviewVars = nullptr;  ///< all review variables; room for twice as many
    std::int16_t FirstVarCount = 0;  ///< entries of FirstVarList
    std::int16_t SecondVarCount = 0;  ///< entries of SecondVarList
    DrillSet* DrillDowns = nullptr;  ///< variables that can be drilled on
    DrillSet* DrillUps = nullptr;  ///< the steps taken, newest first; they are the filter
    DrillSet* Reviews = nullptr;  ///< variables that are only reported on
    std::unique_ptr<drilldown::CountMemory> Counted;  ///< what recounts take over; null: nothing
    bool ReadFailed = false;  ///< the last pass that should have made the statistics had no memory

    // The structures shared with the host.

    OrvTag Table;  ///< the input table
    Orv88Tag Names;  ///< its case names
    b1_com CaseLine;  ///< text line of the case read last
    Wght_com CaseWeight;  ///< weight of the case read last

  private:
    static std::int16_t Toggle(std::int16_t& flag) { return flag = static_cast<std::int16_t>(flag == 0 ? 1 : 0); }
};

/// Creates the module's analysis; null without memory. The one entry of the library.
extern "C" [[gnu::visibility("default")]] CAnalysisSupport* Orv6NewAnalysis();
