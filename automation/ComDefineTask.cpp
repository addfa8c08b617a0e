// The face that the startup dialog shows to scripts.

#include <new>

#include "automation/DDNStartup.h"
#include "automation/InterfaceDescription.h"
#include "dialogs/DefineTask.h"
#include "platform/TextEncodings.h"

using namespace drilldown;

namespace {

constexpr char Scope[] = "CDefineTask::";

template <typename Value>
HRESULT ReadControl(CAnalysisModelessDialog& dialog, const AutomationMember& member, Value* value) {
    return ForwardToHost(dialog, {Scope, "get_", member.Name},
                         [&] { return value == nullptr ? E_POINTER : dialog.GetOleProperty(member.Control, value); });
}

template <typename Value>
HRESULT WriteControl(CAnalysisModelessDialog& dialog, const AutomationMember& member, const Value& value) {
    return ForwardToHost(dialog, {Scope, "put_", member.Name},
                         [&] { return dialog.SetOleProperty(member.Control, value); });
}

}  // namespace

CComDefineTask::CComDefineTask(CDefineTask& task, CAnalysisSupport& analysis)
    : CComQuillaraDialog(task, analysis), Task(task) {
    ++OrvGetAppModuleState()->Locks;
}

CComDefineTask::~CComDefineTask() {
    --OrvGetAppModuleState()->Locks;
}

// By name

HRESULT CComDefineTask::GetTypeInfoCount(std::uint32_t* count) {
    if (count == nullptr) {
        return E_POINTER;
    }
    *count = 1;
    return S_OK;
}

HRESULT CComDefineTask::GetTypeInfo(std::uint32_t index, LCID /*language*/, ITypeInfo** information) {
    if (index != 0) {
        return DISP_E_BADINDEX;
    }
    if (information == nullptr) {
        return E_POINTER;
    }
    *information = &StartupDescription();
    (*information)->AddRef();
    return S_OK;
}

HRESULT CComDefineTask::GetIDsOfNames(const GUID& /*reserved*/, const char16_t* const* names, std::uint32_t count,
                                      LCID /*language*/, DISPID* ids) {
    return StartupDescription().GetIDsOfNames(names, count, ids);
}

HRESULT CComDefineTask::Invoke(DISPID member, const GUID& /*reserved*/, LCID /*language*/, std::uint16_t flags,
                               const DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                               std::uint32_t* badArgument) {
    try {
        const EnterModuleState entered(OrvGetAppModuleState());
        return StartupDescription().Invoke(static_cast<DDNStartup*>(this), member, flags, parameters, result, exception,
                                           badArgument);
    } catch (...) {
        return ReportInvokeFailure(exception);
    }
}

// By the host's property calls

HRESULT CComDefineTask::Read(const AutomationMember& member, BSTR* value) {
    return ReadControl(FaceDialog, member, value);
}

HRESULT CComDefineTask::Read(const AutomationMember& member, int* value) {
    return ReadControl(FaceDialog, member, value);
}

HRESULT CComDefineTask::Read(const AutomationMember& member, double* value) {
    return ReadControl(FaceDialog, member, value);
}

HRESULT CComDefineTask::Read(const AutomationMember& member, IDispatch** value) {
    return ReadControl(FaceDialog, member, value);
}

HRESULT CComDefineTask::Write(const AutomationMember& member, int value) {
    return WriteControl(FaceDialog, member, value);
}

HRESULT CComDefineTask::Write(const AutomationMember& member, double value) {
    return WriteControl(FaceDialog, member, value);
}

HRESULT CComDefineTask::Write(const AutomationMember& member, const VARIANT& value) {
    return WriteControl(FaceDialog, member, value);
}

HRESULT CComDefineTask::Press(const AutomationMember& member) {
    return ForwardToHost(FaceDialog, {Scope, "", member.Name},
                         [&] { return FaceDialog.SetOleProperty(member.Control); });
}

// By code of their own

HRESULT CComDefineTask::ReadOwn(HRESULT (*read)(CDefineTask& task, std::string& text), BSTR* text) {
    return RunInAnalysis(FaceDialog, FaceAnalysis, [&] {
        if (text == nullptr) {
            return E_POINTER;
        }
        *text = nullptr;
        std::string value;
        const HRESULT status = read(Task, value);
        if (Succeeded(status) && (*text = SysAllocString(WideText(value))) == nullptr) {
            throw std::bad_alloc();
        }
        return status;
    });
}

HRESULT CComDefineTask::WriteOwn(HRESULT (*write)(CDefineTask& task, const VARIANT& value), const VARIANT& value) {
    return RunInAnalysis(FaceDialog, FaceAnalysis, [&] {
        Task.BeginOleAutomation();
        return write(Task, value);
    });
}
