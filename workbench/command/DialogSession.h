#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "host/CaseBlocks.h"
#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisModule.h"
#include "workbench/scripting/DialogActions.h"
#include "workbench/windows/Window.h"

namespace quillara {

/// What is in force while the cases are read.
struct CaseSettings {
    std::vector<CaseResult> Selection;  ///< one per case; empty: all cases
    std::optional<std::size_t> Weight;  ///< index of the weight variable; nothing: none
    std::vector<Remark> Notices;  ///< about formulas of the table and the selection
    std::size_t Threads = 0;  ///< that go through the cases side by side; 0: as many as the machine has cores
};

/// A drill-down analysis that is worked with as a user does, without a screen: acts on the controls of its startup
/// dialog and answers the modal dialogs that they open. Controls that can't be used at the moment throw as those of a
/// Window. An action for which the analysis lacks memory ends in a DataError; the session is then of no more use.
class DialogSession final : public DialogActions {
  public:
    /// An analysis of a table, which outlives the session. Of the services WorkIn is the session's own matter.
    /// Throws DataError when the module can't be loaded or has no memory.
    DialogSession(const DataTable& table, CaseSettings settings, AnalysisServices services);

    void Press(int id) override;
    void Press(int id, const Answer& answer) override;
    /// Runs the command of a control, whether or not it is enabled.
    void Command(int id);
    void ClickRow(int list, int row) override;
    void TypeNumber(int field, double number) override;

    [[nodiscard]] const Control& At(int id) override;
    /// The analysis itself, for what isn't done by hand.
    [[nodiscard]] AnalysisDocument& Analysed() { return Document; }

  private:
    void Act(const std::function<void(Window&)>& action, const Answer* answer = nullptr);
    bool WorkIn(Window& dialog);

    AnalysisModule Library;
    AnalysisDocument Document;
    bool LacksMemory = false;  // the analysis has said so
    const Answer* NextAnswer = nullptr;  // to the next modal dialog of the action that runs; null: it is cancelled
};

}  // namespace quillara
