#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "platform/CountedPointer.h"
#include "workbench/data/DefaultChoice.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/documents/StepTaken.h"
#include "workbench/exploration/ExplorationJournal.h"
#include "workbench/exploration/ExplorationListener.h"
#include "workbench/exploration/ResultBases.h"
#include "workbench/exploration/SubjectKeys.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisModule.h"
#include "workbench/scripting/CategoryAnswer.h"
#include "workbench/scripting/DialogActions.h"

namespace quillara {

class SettingsStore;

/// One drill-down analysis of a table, as a person works with it: its startup dialog is open from the start to the end.
/// Whatever is done is done in that window, or in one that it has opened; the operations below press its buttons too.
/// While a command runs no other can begin, and none once the dialog has been left: operations throw UsageError then.
/// One for which memory was lacking ends in a DataError. In a list of drill variables in which no row is selected after
/// a command the row of the variable that the analysis goes by is selected, as by a click, or the first one where it
/// goes by none. From one thread only.
class Exploration final : public DialogActions {
  public:
    /// `listener` and `settings` outlive it; `opening` is how a recorded script begins. Throws DataError when the
    /// module can't be loaded or has no memory.
    Exploration(std::shared_ptr<const DataTable> table, ScriptOpening opening, ExplorationListener& listener,
                SettingsStore* settings);
    /// Documents that others hold live on, closed ones as closed.
    ~Exploration() override;

    // What is there

    [[nodiscard]] Window& Startup() { return *Document.StartupWindow(); }
    /// Whether the startup dialog has been left: nothing more can be done.
    [[nodiscard]] bool HasEnded() { return Document.StartupWindow() == nullptr; }
    [[nodiscard]] bool IsBusy() const { return Running || !Modal.empty(); }
    /// Whether the command that runs is at the picking of bars, which can be left for another.
    [[nodiscard]] bool IsPicking() const { return Picks; }
    /// The table as it is now; the startup dialog can open another.
    [[nodiscard]] const DataTable& Table() const { return Document.Table(); }
    /// The same, for who keeps it beyond the exploration.
    [[nodiscard]] std::shared_ptr<const DataTable> SharedTable();
    [[nodiscard]] AnalysisDocument& Analysed() { return Document; }
    /// The documents that stand in windows, the newest last.
    [[nodiscard]] const std::vector<CountedPointer<ResultDocument>>& Documents() const { return Shown; }
    /// The steps in force, in the order in which they were taken.
    [[nodiscard]] std::vector<StepTaken> Steps();
    /// The cases before the first step, and those that the steps leave; nothing: not known.
    [[nodiscard]] std::optional<SubsetSize> Selected();
    [[nodiscard]] std::optional<SubsetSize> Remaining();
    /// The name of the weight variable in force; nothing: none is.
    [[nodiscard]] std::optional<std::string> WeightName();
    [[nodiscard]] CasesInForce CasesInForceNow();
    /// Whether a result that follows the steps has been made of another selection or weight of the table.
    [[nodiscard]] bool HasOldResults();
    [[nodiscard]] ExplorationJournal& Recording() { return Recorder; }

    // What a person does

    /// Does something in a window of the exploration, then what follows from it.
    void Use(Window& window, const std::function<void(Window&)>& action);
    void Press(int id) override;
    void Press(int id, const Answer& answer) override;
    void ClickRow(int list, int row) override;
    void TypeNumber(int field, double number) override;
    [[nodiscard]] const Control& At(int id) override;

    /// Makes a remark on what was done for the person.
    void Note(const Remark& remark) { Listener.RemarkMade(remark); }

    [[nodiscard]] bool CanGoDown(const std::string& variable);
    [[nodiscard]] bool CanGoUp(const std::string& variable);
    /// The variable that the analysis goes by in one of the two lists: brushing, and a step that it undoes, are about
    /// it. Empty: there is none.
    [[nodiscard]] std::string CurrentVariable(int list);
    /// The variable of a row of one of the two lists; empty when there is no such row.
    [[nodiscard]] std::string VariableAt(int list, int row);
    /// Puts just these variables into the lists of drill variables; they aren't empty.
    void ChooseDrillVariables(const VariableLists& variables);
    /// Selects the variable and presses Down; the category dialog is answered with a row. Throws ImpossibleStep when
    /// there is no such variable among those that can be drilled on, and what `chooseRow` throws: no step is taken
    /// then.
    void Down(const std::string& variable, const RowChooser& chooseRow);
    /// The same by the name of the category.
    void Down(const std::string& variable, const std::string& category);
    /// Throws ImpossibleStep when there is no step on the variable.
    void Up(const std::string& variable);

    /// Does again what has been done in an exploration of the same table, also when settings have become others since;
    /// nothing has been done in this one. Messages aren't shown again. What can't be done any more throws as it does
    /// for a person; what was done before it stands.
    void Replay(const std::vector<JournalEntry>& entries);

    /// Closes a document, as its window is closed. Where the analysis lets another document take its subject over with
    /// a later step, that one is put away until its subject is another, or its button is pressed.
    void Close(ResultDocument& document);
    /// What runs through the cases ends as soon as it can.
    void Cancel() { BreakFlag = true; }

  private:
    /// Whose content hasn't been told yet.
    struct FreshDocument {
        CountedPointer<ResultDocument> Document;
        bool StandsAlone;
        bool IsUpdated;  // behind a step, so that it stays where it is
    };

    AnalysisServices Services(SettingsStore* settings);
    void DemandOpen();
    void Act(const std::function<void()>& action, const Answer* answer = nullptr);
    void SelectCurrentRow();
    bool WorkIn(Window& dialog);
    bool WorkAgain(Window& dialog);
    bool Pick(BrushingRun& run);
    bool PickAgain(BrushingRun& run);
    void DoAgain(const JournalEntry& entry);
    void BeginAs(bool isUpdating);
    void Take(ResultDocument& document, bool standsAlone);
    void TellDocuments();
    void Tell(const FreshDocument& fresh);
    bool PutsAway(const FreshDocument& fresh);
    bool Appears(const FreshDocument& fresh);
    [[nodiscard]] int RowOf(int list, const std::string& variable);

    ExplorationListener& Listener;
    std::vector<std::shared_ptr<const DataTable>> Tables;  // that live as long as the analysis
    ExplorationJournal Recorder;
    AnalysisModule Library;
    AnalysisDocument Document;
    std::atomic<bool> BreakFlag = false;
    std::vector<FreshDocument> Fresh;  // their contents, not told yet
    std::vector<CountedPointer<ResultDocument>> Shown;
    ResultBases Bases;
    std::vector<CountedPointer<ResultDocument>> PutAway;  // that stand in no window; the analysis goes on with them
    std::set<SubjectKey> ClosedSubjects;  // of documents that the user has closed
    std::vector<Window*> Modal;  // that stand open, the inmost last
    const Answer* NextAnswer = nullptr;  // to the next modal dialog of the action that runs; null: the user answers
    std::span<const JournalEntry>* Again = nullptr;  // what is still to be done again; null: nothing is
    bool Running = false;
    bool Picks = false;
    bool LacksMemory = false;
};

}  // namespace quillara
