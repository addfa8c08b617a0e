#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/DialogAutomation.h"
#include "platform/Automation.h"
#include "platform/DialogResource.h"
#include "platform/Handles.h"

class CAnalysisSupport;
class COleAConstant;
struct ControlRow;
struct DialogHost;
struct MessageMap;
struct DataExchange;
struct ModuleInstance;

/// Base of an analysis's dialogs: the services of the host that they stand on. The host makes the window of a dialog
/// from the module's resource of that id and passes every message of it, in order, to EventHandler. Calls with a window
/// act on its controls and on those of its pages; what isn't there is passed over. All run on the dialog's own thread.
class CAnalysisDialog {
  public:
    /// A dialog without a window yet. The analysis outlives it; `parent` may be null.
    CAnalysisDialog(CAnalysisSupport& analysis, int resource, HWND parent);
    CAnalysisDialog(const CAnalysisDialog&) = delete;
    CAnalysisDialog& operator=(const CAnalysisDialog&) = delete;

    // What a dialog may override, in the order of the slots.

    virtual ~CAnalysisDialog();
    /// The framework's table of messages; null: none.
    virtual const MessageMap* GetMessageMap() const;
    /// The framework's exchange of values with controls; does nothing.
    virtual void DoDataExchange(DataExchange* exchange);
    /// The automation face of the dialog; null: none.
    virtual IUnknown* GetUnknown();
    /// Acts on a message. A result other than 0 says that it was handled.
    virtual std::int64_t EventHandler(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam);
    /// The value of a control for a recorded script, owned by the caller; null: none. The base reads the controls of
    /// the control table from the window.
    virtual COleAConstant* RecordControlValue(int id);
    /// What the dialog is called by people and scripts.
    virtual std::string GetDialogDescription();

    // Start and end

    /// Common start of every dialog.
    void InitOpeningDialog();
    /// Makes the pages of a tab control from a table that a row of zeros ends. `first` is -1: the first page in front.
    void AddDlgTabs(int tabControl, const TabRow* tabs, int first, const ModuleInstance* scope, HWND parent);
    /// Closes the dialog with a result once the message that runs is done. The first result counts.
    void ExitDialog(int result, int reserved1, int reserved2);

    // Controls

    HWND GetDlgItem(HWND window, int id);
    void EnableWindow(HWND window, int id, bool enable);
    void ShowWindow(HWND window, int id, bool show);
    void CheckDlgButton(HWND window, int id, bool check);
    bool IsDlgButtonChecked(HWND window, int id);
    /// Writes the text of an edit or static control, cut to `size` bytes with its zero, into `text`. Gives its length.
    int GetDlgItemTextA(HWND window, int id, char* text, int size);
    void SetDlgItemTextA(HWND window, int id, const char* text);
    void InitStaticListBox(HWND listBox, const char* const* texts);
    /// Writes the names of `count` variables, by number, into a static control; of none, the word "none".
    void WriteVarListToCaption(HWND window, int id, int count, const short* variables);

    // Number fields. A field gives back exactly what was written; its range limits what is typed into it.

    void SetIntEditRange(HWND field, int lowest, int highest);
    void SetRealEditRange(HWND field, double lowest, double highest, int mode);
    void SetDlgItemInt(HWND window, int id, int value, int mode);
    /// `format` is 2 for a resting value, 3 for a value of a record.
    void SetDlgItemDouble(HWND window, int id, double value, int mode, int format);
    /// 0, and the value, or not 0 and nothing written when the field holds no number, or no whole one of 16 bits.
    int GetDlgItemInteger(HWND window, int id, std::int16_t* value);
    int GetDlgItemDouble(HWND window, int id, double* value);

    // Colours

    /// The host's colour for an attribute; 1: fields that show results.
    static std::uint32_t RGBAttrType(int attribute);
    /// Gives the control of a colour query that colour. Not 0: handled.
    std::int64_t HandleWM_CTLCOLOR(HWND window, std::uint64_t wParam, std::int64_t lParam, std::uint32_t colour);

    // Dialogs of the host. Each runs until the user has closed it.

    /// Lets the user change the case selection. `mode` is 1. 1 when it was confirmed, else 0.
    int DefineSelCond(int mode, HWND window);
    /// Lets the user choose the weight variable and switch weights on and off. `mode` is 1. 1 when confirmed, else 0.
    int DefineWeight(int mode, HWND window);
    /// Lets the user open another data file, which then is the input table. 0 when nothing was opened.
    int OpenOrvFile();

    // Memory and texts

    /// As CAnalysisSupport::AllocMem and FreeMem.
    int AllocMem(void** address, unsigned long size);
    void FreeMem(void* address);
    /// A text of a module's string table.
    static std::string szLoadResString(const ModuleInstance* module, int id);

    // Scripts and recording

    /// True while the dialog is driven by a script.
    bool IsOleAutomation() const;
    /// A script has written to the dialog without using a control: it drives the dialog from now on, until a person's
    /// next message. Controls that are written or pressed for a script tell it by themselves. Throws a COleException of
    /// RPC_E_SERVERCALL_RETRYLATER while a command or a modal window waits.
    void BeginOleAutomation();
    /// What the controls are to scripts and recorders. The table lives as long as the module; without one no control is
    /// recorded.
    void SetControlTable(const ControlRow* table);
    /// Takes and keeps the value of a control now, for the record that follows.
    void EarlyRecordState(int id);

    std::uint8_t AutomationInteractive = 0;  ///< not 0: a script wants dialogs to open as for a user

  protected:
    [[nodiscard]] DialogHost& Host() const { return *Side; }
    [[nodiscard]] CAnalysisSupport& Support() const { return Owner; }

  private:
    friend struct DialogHost;

    CAnalysisSupport& Owner;
    std::unique_ptr<DialogHost> Side;  // the host's side of the dialog
};

/// A dialog that stays open while the user works elsewhere, and that scripts can drive. It is made on the heap and
/// counted, the maker's reference first: the host has one until the end of the window, scripts have theirs, and the
/// dialog goes with the last. Its analysis lives at least as long.
class CAnalysisModelessDialog : public CAnalysisDialog, public CAnalysisDialogAutomationOptions {
  public:
    CAnalysisModelessDialog(CAnalysisSupport& analysis, int resource, HWND parent);
    ~CAnalysisModelessDialog() override;

    std::uint32_t AddDialogReference() { return ++References; }
    std::uint32_t ReleaseDialogReference();

    /// Makes the window and runs its start. When it succeeds the host takes over the caller's reference and the result
    /// is not 0; otherwise the caller still has it.
    int CreateAnalysisDialog();

    /// The host's chance to take a message first; not 0: it has.
    short IsResultsMsg(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam);
    /// Bracket what changes the state of the analysis or opens a dialog. The lock doesn't count: one unlock ends it.
    void LockResults();
    void UnlockResults();
    /// Brings the results back into view after a dialog of the host; ends a lock.
    void RestoreResults();
    /// The same at the end of an interaction with a result.
    void ReallyRestoreResults();
    /// Whether the menus of the startup dialog can be used.
    void EnableStartupMenus(int enable);

    /// Closes the record of the dialog's present state with the action of a control. `step` is the number of the
    /// dialog's step in the sequence table, `kind` is 3.
    virtual void FinishRecordingDialog(int step, int kind, int control);
    /// Records the call of a method that a control stands for.
    virtual void RecordActionMethod(int control);
    /// Records what the button of a control has made.
    virtual void RecordOutput(int control);

    // What scripts can do with every dialog. The failing ones leave no error object; whoever calls them does.

    /// Throws a COleException of CO_E_OBJNOTCONNECTED when the window no longer exists.
    void ThrowIfClosed() const;
    /// The name of the dialog.
    HRESULT get_Name(BSTR* name);
    /// Sends the command of the OK button; 1 when the dialog acted on it, else 0.
    HRESULT OAOK(int* success);
    /// Sends the command of the Cancel button.
    HRESULT OACancel();

    // Members of analyses with a results dialog; others throw a COleDispatchException of E_NOTIMPL that says so.

    HRESULT put_ResultsSelection(const VARIANT& value);
    HRESULT put_ResultsSelectionOption(const VARIANT& value);
    HRESULT put_ResultsVariables(const VARIANT& value);
    HRESULT put_ResultsOption(int value);
    HRESULT put_ResultsCodes(const VARIANT& value);
    HRESULT put_ResultsSaveFileName(const char16_t* value);
    HRESULT put_ResultsValues(const VARIANT& value);
    HRESULT put_ResultsOutputFields(const VARIANT& value);

  private:
    std::uint32_t References = 1;
};

/// A dialog that the user ends before going on.
class CAnalysisModalDialog : public CAnalysisDialog {
  public:
    using CAnalysisDialog::CAnalysisDialog;

    /// Runs the dialog until it is closed. Gives the result that ExitDialog was given; 0 when there is no such dialog.
    int DoModal(const ModuleInstance* scope);
};
