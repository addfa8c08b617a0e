#pragma once

#include <cstdint>

#include "platform/Automation.h"

class CAnalysisDialog;

/// How automation reads, writes and presses the controls of a dialog, by their ids. Each operation gives a status:
/// DISP_E_MEMBERNOTFOUND for a control that isn't there, that of the conversion for a value of another type. A failure
/// that needs words is thrown: a COleDispatchException, of E_ACCESSDENIED for a control that is disabled, or hidden and
/// no button of the control table, of E_INVALIDARG for a value that the control doesn't take, of E_FAIL for a press
/// without a result; a COleException of CO_E_OBJNOTCONNECTED for a closed window and of RPC_E_SERVERCALL_RETRYLATER for
/// a press or a write while a press, a command or a modal window waits; std::bad_alloc, with words, for lack of memory.
/// Texts, objects and values that are results are the caller's.
class CAnalysisDialogAutomationOptions {
  public:
    /// The controls of `dialog`, whose part this is.
    explicit CAnalysisDialogAutomationOptions(CAnalysisDialog& dialog) : Dialog(dialog) {}
    CAnalysisDialogAutomationOptions(const CAnalysisDialogAutomationOptions&) = delete;
    CAnalysisDialogAutomationOptions& operator=(const CAnalysisDialogAutomationOptions&) = delete;

    // In the order of the slots.

    /// The value of a control, of the type that it has.
    virtual HRESULT GetOleProperty(std::uint16_t control, VARIANT* value);
    /// The value of a real field.
    virtual HRESULT GetOleProperty(std::uint16_t control, double* value);
    /// The text of a control; of a variables button the list of the variables that are chosen.
    virtual HRESULT GetOleProperty(std::uint16_t control, BSTR* value);
    /// The state of a check box or a radio button, 0 or 1, or the value of an integer field.
    virtual HRESULT GetOleProperty(std::uint16_t control, int* value);
    /// Presses a button, runs the messages that are posted meanwhile, and hands back what it made: a document, or a
    /// collection of several with Count and Item.
    virtual HRESULT GetOleProperty(std::uint16_t control, IDispatch** value);
    /// Presses a button.
    virtual HRESULT SetOleProperty(std::uint16_t control);
    /// Writes a real field.
    virtual HRESULT SetOleProperty(std::uint16_t control, double value);
    /// Writes a text.
    virtual HRESULT SetOleProperty(std::uint16_t control, const char16_t* value);
    /// Writes a check box, a radio button or an integer field. Another state than the present one of a check box or a
    /// radio button runs the command of the control once.
    virtual HRESULT SetOleProperty(std::uint16_t control, int value);
    /// Writes a control by a value of any type; of a variables button the variables chosen.
    virtual HRESULT SetOleProperty(std::uint16_t control, const VARIANT& value);
    /// Writes an object.
    virtual HRESULT SetOleProperty(std::uint16_t control, IDispatch* value);

  protected:
    ~CAnalysisDialogAutomationOptions() = default;

  private:
    CAnalysisDialog& Dialog;
};

/// What scripts can do with every dialog of an analysis.
struct IComQuillaraDialog : IDispatch {
    static constexpr GUID Id = GuidOf("{C9E2A04E-3D45-11D4-9FF4-00C04FA0D540}");

    virtual HRESULT get_Name(BSTR* pName) = 0;
    virtual HRESULT get_Application(IDispatch** pApp) = 0;
    virtual HRESULT get_Parent(IDispatch** pApp) = 0;
    virtual HRESULT OK(int* pSuccess) = 0;
    virtual HRESULT Cancel() = 0;
    virtual HRESULT put_ResultsSelection(VARIANT value) = 0;
    virtual HRESULT put_ResultsSelectionOption(VARIANT value) = 0;
    virtual HRESULT put_ResultsVariables(VARIANT value) = 0;
    virtual HRESULT put_ResultsOption(int value) = 0;
    virtual HRESULT put_ResultsCodes(VARIANT value) = 0;
    virtual HRESULT put_ResultsSaveFileName(BSTR value) = 0;
    virtual HRESULT put_ResultsValues(VARIANT value) = 0;
    virtual HRESULT put_ResultsOutputFields(VARIANT value) = 0;

  protected:
    ~IComQuillaraDialog() = default;
};
