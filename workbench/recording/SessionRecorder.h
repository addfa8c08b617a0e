#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "workbench/data/Remark.h"
#include "workbench/hosting/StepRecorder.h"
#include "workbench/hosting/VariablesChosen.h"
#include "workbench/recording/HeldCall.h"
#include "workbench/recording/PendingCategorization.h"
#include "workbench/recording/RecordedDocuments.h"
#include "workbench/recording/RecordedScript.h"
#include "workbench/recording/StepTokens.h"
#include "workbench/windows/WindowCall.h"

class CAnalysisModelessDialog;

namespace quillara {

/// Records what is done with one analysis as a script of the Python package: the script's run gives the same documents.
/// It listens from the start of the analysis on, since the numbers of an analysis rest on all that was done in it, and
/// gives the script whenever it is asked for; a recording may begin at any time.
class SessionRecorder : public StepRecorder {
  public:
    explicit SessionRecorder(ScriptOpening opening)
        : Script(std::move(opening)), Documents(Script), Held(Script, Documents) {}

    /// The script up to now.
    [[nodiscard]] std::string Text();
    /// The user begins to record here: the script brings a new analysis to this state, with none of the documents that
    /// are there but those that stand alone, which the steps to come bring up to date, and goes on. Not while a
    /// command runs.
    void BeginHere();

    /// Writes a line that changes nothing in the dialog.
    void RecordLine(const std::string& line);
    /// Writes a remark that the script's analysis wouldn't make itself.
    void RecordRemark(const Remark& remark);
    /// Does work in the dialog that one line of the script does; gives what it gives. Not while a command runs.
    template <class Work>
    auto RecordAside(const std::string& line, Work work) {
        BeginAside(line);
        auto result = work();
        EndAside();
        return result;
    }

    void RecordStep(CAnalysisDoc& document, const std::vector<RecordedValue>& values, int control) override;
    void RecordMethod(CAnalysisDoc& /*document*/, int /*control*/) override {}  // RecordStep ends in it
    void RecordOutput(CAnalysisDoc& document, int control) override;
    void BeginCommand(CAnalysisDoc& document, int control) override;
    void EndCommand(CAnalysisDoc& document, int control) override;
    void FailCommand(CAnalysisDoc& document, int control) override;
    void RecordSent(int control) override;
    void RecordCall(const Window& window, const WindowCall& call) override;
    void RecordAnswer(Window& window) override;
    void RecordPick(const BrushingRun& run) override;
    void RecordDocument(const ResultDocument& document) override;
    void RecordClose(const ResultDocument& document) override;
    void RecordDataClose(const DataTable& table) override;
    void RecordMessage(std::string_view text) override;

  private:
    /// What has been done in a modal window.
    struct ModalAnswer {
        int Dialog;  ///< id of its resource
        bool IsConfirmed;
        std::vector<WindowCall> Calls;
    };

    /// The command that runs.
    struct RunningCommand {
        int Control = 0;
        bool IsUsable = false;  ///< its control was, when it began
        bool IsVisible = false;
        ShownCategorization Page;  ///< as it was when it began
        std::string Variable;  ///< the current one then
        std::vector<ModalAnswer> Answers;
        std::vector<MadeDocument> Documents;
        std::vector<MadeDocument> Closed;  ///< of these
        bool HasOutput = false;
        bool HasMessage = false;
        int StepControl = 0;  ///< the action of the step that is taken; 0: none is
        bool HasPicked = false;  ///< a bar of the brushing graph
        bool AsksBoundaries = false;  ///< before brushing, in a dialog or in vain
        bool HasBrushed = false;  ///< a cycle of brushing is written
        std::optional<int> Row;  ///< of the category that a person has chosen
        std::string RowName;
        bool IsMissing = false;
    };

    using Handler = void (SessionRecorder::*)();
    struct CommandRow {
        int Control;
        Handler Write;
    };
    static const std::array<CommandRow, 20> Commands;

    void BeginAside(const std::string& line);
    void EndAside();
    void Start();
    [[nodiscard]] Window& Startup() const;
    [[nodiscard]] ShownCategorization Page() const;
    [[nodiscard]] std::string CurrentVariable() const;
    [[nodiscard]] bool IsConfirmed(int dialog) const;
    [[nodiscard]] bool HasAsked(int dialog) const;
    [[nodiscard]] TwoLists ListsChosen() const;

    void EndStep();
    void WriteDown(const std::vector<RecordedValue>& values);
    void WriteUp(const std::vector<RecordedValue>& values);
    void WriteDrag(const WindowCall& call);
    void WriteCategory(const std::vector<RecordedValue>& values);
    [[nodiscard]] std::vector<std::string> Answers() const;
    [[nodiscard]] std::vector<std::string> AnswerLines() const;
    [[nodiscard]] std::string PairsComment() const;
    void OfferCommand();
    void EndVerbatim();
    void ChangeMode(bool hasDoubles);
    [[nodiscard]] std::string CallLine() const;
    [[nodiscard]] std::string DocumentsName() const;
    void WriteMaking(const std::string& line, const std::string& result = "");
    void TakeTable();
    void Close(const MadeDocument& document);
    void WriteMember(int control, const std::string& value);

    // What is to be written once a command is done
    void WriteListClick();
    void WriteNoStep();
    void TakeBoundaries();
    void WriteVariables();
    void WriteAnswered();
    void WriteOpened();
    void TakeNewData();
    void WriteBox();
    void WriteBrushing();
    void WriteVainBrushing();
    void WriteClosing();
    void WriteResult();
    void WriteVainPress();

    RecordedScript Script;
    RecordedDocuments Documents;
    PendingCategorization Pending;
    CAnalysisModelessDialog* Dialog = nullptr;
    bool HasStarted = false;
    RunningCommand Now;
    std::vector<WindowCall> Calls;  // in the modal window that is open
    std::map<int, bool> Boxes;
    // A variable that stands in both lists of drill variables is two records, of which members know one: with such all
    // is written as calls of the window.
    bool IsVerbatim = false;
    bool IsAside = false;  // what is done is written already
    HeldCall Held;
    bool HasBrushingGraph = false;  // one that stands alone has been left on the screen
};

}  // namespace quillara
