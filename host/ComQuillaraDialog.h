#pragma once

#include <cstdint>

#include "host/AnalysisDialog.h"
#include "host/AnalysisDoc.h"
#include "host/AnalysisSupport.h"
#include "host/DialogAutomation.h"
#include "host/GraphAutomation.h"
#include "platform/CountedPointer.h"
#include "platform/ErrorInfo.h"

/// The face that a dialog shows to scripts, as far as it is alike for all dialogs: a part of the dialog, counted with
/// it. `Interface` is the dialog's own, over IComQuillaraDialog. Calls that go to the host run in
/// Guard::Run(dialog, use, member, call), which gives their status and lets no failure out; `use` and `member` are the
/// two pieces of the call's name, such as "get_" and "Name".
template <typename Interface, typename Guard>
class CComQuillaraDialog : public Interface, public ISupportErrorInfo {
  public:
    CComQuillaraDialog(const CComQuillaraDialog&) = delete;
    CComQuillaraDialog& operator=(const CComQuillaraDialog&) = delete;

    HRESULT QueryInterface(const GUID& id, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = nullptr;
        if (id == IUnknown::Id || id == IDispatch::Id || IsOfFace(id)) {
            *object = static_cast<Interface*>(this);
        } else if (id == ISupportErrorInfo::Id) {
            *object = static_cast<ISupportErrorInfo*>(this);
        } else {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    std::uint32_t AddRef() override { return FaceDialog.AddDialogReference(); }
    std::uint32_t Release() override { return FaceDialog.ReleaseDialogReference(); }

    HRESULT InterfaceSupportsErrorInfo(const GUID& id) override { return IsOfFace(id) ? S_OK : S_FALSE; }

    HRESULT get_Name(BSTR* pName) override {
        return Guard::Run(FaceDialog, "get_", "Name",
                          [=, this] { return pName == nullptr ? E_POINTER : FaceDialog.get_Name(pName); });
    }
    // Intended: answers also when the dialog has closed, and reports nothing, unlike all other members; scripts find
    // their way to the application from what they still hold.
    HRESULT get_Application(IDispatch** pApp) override {
        if (pApp == nullptr) {
            return E_POINTER;
        }
        const auto application = CountedPointer<IApplication>::Adopt(OleAGetApplication());
        *pApp = QueryFor<IDispatch>(application.Get()).Detach();
        return *pApp == nullptr ? E_NOINTERFACE : S_OK;
    }
    HRESULT get_Parent(IDispatch** pApp) override {
        return Guard::Run(FaceDialog, "get_", "Parent", [=, this] {
            CAnalysisDoc* document = FaceAnalysis.GetDocument();
            if (pApp == nullptr) {
                return E_POINTER;
            }
            return document == nullptr ? E_FAIL : document->GetExternQlaAnalysisPointer(pApp);
        });
    }
    HRESULT OK(int* pSuccess) override {
        return Guard::Run(FaceDialog, "", "OK",
                          [=, this] { return pSuccess == nullptr ? E_POINTER : FaceDialog.OAOK(pSuccess); });
    }
    HRESULT Cancel() override {
        return Guard::Run(FaceDialog, "", "Cancel", [this] { return FaceDialog.OACancel(); });
    }
    HRESULT put_ResultsSelection(VARIANT value) override {
        return Guard::Run(FaceDialog, "put_", "ResultsSelection",
                          [&] { return FaceDialog.put_ResultsSelection(value); });
    }
    HRESULT put_ResultsSelectionOption(VARIANT value) override {
        return Guard::Run(FaceDialog, "put_", "ResultsSelectionOption",
                          [&] { return FaceDialog.put_ResultsSelectionOption(value); });
    }
    HRESULT put_ResultsVariables(VARIANT value) override {
        return Guard::Run(FaceDialog, "put_", "ResultsVariables",
                          [&] { return FaceDialog.put_ResultsVariables(value); });
    }
    HRESULT put_ResultsOption(int value) override {
        return Guard::Run(FaceDialog, "put_", "ResultsOption", [&] { return FaceDialog.put_ResultsOption(value); });
    }
    HRESULT put_ResultsCodes(VARIANT value) override {
        return Guard::Run(FaceDialog, "put_", "ResultsCodes", [&] { return FaceDialog.put_ResultsCodes(value); });
    }
    HRESULT put_ResultsSaveFileName(BSTR value) override {
        return Guard::Run(FaceDialog, "put_", "ResultsSaveFileName",
                          [&] { return FaceDialog.put_ResultsSaveFileName(value); });
    }
    HRESULT put_ResultsValues(VARIANT value) override {
        return Guard::Run(FaceDialog, "put_", "ResultsValues", [&] { return FaceDialog.put_ResultsValues(value); });
    }
    HRESULT put_ResultsOutputFields(VARIANT value) override {
        return Guard::Run(FaceDialog, "put_", "ResultsOutputFields",
                          [&] { return FaceDialog.put_ResultsOutputFields(value); });
    }

  protected:
    CComQuillaraDialog(CAnalysisModelessDialog& dialog, CAnalysisSupport& analysis)
        : FaceDialog(dialog), FaceAnalysis(analysis) {}
    ~CComQuillaraDialog() = default;

    CAnalysisModelessDialog& FaceDialog;
    CAnalysisSupport& FaceAnalysis;

  private:
    static bool IsOfFace(const GUID& id) { return id == IComQuillaraDialog::Id || id == Interface::Id; }
};
