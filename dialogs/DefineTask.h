#pragma once

#include <cstdint>
#include <string>

#include "automation/DDNStartup.h"
#include "engine/DrillDown.h"
#include "host/AnalysisDialog.h"

/// Base of the module's modeless dialogs.
class CDrillDownModelessDialog : public CAnalysisModelessDialog {
  public:
    using CAnalysisModelessDialog::CAnalysisModelessDialog;
};

/// The startup dialog: the one window of the analysis, open as long as the analysis runs. It shows the state of the
/// analysis and drives it; every action of a user or a script ends in the commands of EventHandler, by control id. It
/// holds no data of the analysis, only scratch values of the Categorization page.
class CDefineTask : public CDrillDownModelessDialog, public CComDefineTask {
  public:
    /// A dialog without a window; the analysis outlives it.
    explicit CDefineTask(CDrillDown& analysis);

    const MessageMap* GetMessageMap() const override;
    void DoDataExchange(DataExchange* exchange) override;
    /// The face that scripts see; no reference is taken.
    IUnknown* GetUnknown() override;
    /// The command switch. 1 where a command says so, else 0.
    std::int64_t EventHandler(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam) override;
    /// For a recorded script, of the values that no control shows and of the current variables: what the member that
    /// stands for the control gives to scripts; none where it fails - dialogs/ControlRecording.cpp
    COleAConstant* RecordControlValue(int id) override;
    std::string GetDialogDescription() override;

    // Lists and controls - dialogs/ControlStates.cpp

    /// CurrentDown := the record at the selected row of the drill-down list, if there is one; Selected := -1.
    void SelectCurrentDown();
    /// CurrentUp := the record at the selected row of the drill-up list, if there is one.
    void SelectCurrentUp();
    /// Enables and checks all controls by the present state of the analysis.
    void UpdateControls();
    /// Checks the boxes of the options for box plots by their flags, also while they can't be used.
    void ShowBoxPlotOptions();

    // Categorization page - dialogs/CategorizationPage.cpp

    /// Puts the inputs of the page to rest.
    void ResetCategorizationControls();
    void EnableCategorizationMethods(bool enable);
    /// Fills the page from the current record.
    void ShowCategorization();
    /// Writes the page into the current record when it says something else; always 1.
    int ApplyCategorization();

    HWND Window = nullptr;  ///< the window of the last event
    CDrillDown* Analysis;  ///< not owned
    std::int16_t CatVarType = 0;  ///< VarType of the current record
    std::int16_t CatMethod = 0;  ///< method chosen on the page; -1: none
    std::int16_t CatCount = 10;  ///< number of intervals
    std::uint16_t CatStartAtMin = 1;
    double CatStepSize = 1.0;
    double CatStepStart = 0.0;
};
