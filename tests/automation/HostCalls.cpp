// The host's calls, each in front of the real one: the linker takes the definitions of the program first.

#include "tests/automation/HostCalls.h"

#include <dlfcn.h>

#include "host/AnalysisDialog.h"
#include "host/AnalysisSupport.h"
#include "host/ScriptValues.h"
#include "tests/automation/FaceBench.h"

namespace dialogtest {

std::function<void(const std::string& call)> OnHostCall;

namespace {

void Tell(const std::string& call) {
    if (const auto listener = OnHostCall) {
        listener(call);
    }
}

template <typename Result, typename... Arguments>
Result CallReal(const char* name, Arguments... arguments) {
    return reinterpret_cast<Result (*)(Arguments...)>(dlsym(RTLD_NEXT, name))(arguments...);
}

std::string Shown(int value) {
    return std::to_string(value);
}

std::string Shown(double value) {
    return TextOf(OwnedVariant::OfReal(value).Get());
}

}  // namespace
}  // namespace dialogtest

using dialogtest::CallReal;
using dialogtest::Tell;

using Options = CAnalysisDialogAutomationOptions;

HRESULT Options::GetOleProperty(std::uint16_t control, BSTR* value) {
    Tell("get text " + std::to_string(control));
    return CallReal<HRESULT>("_ZN32CAnalysisDialogAutomationOptions14GetOlePropertyEtPPDs", this, control, value);
}

HRESULT Options::GetOleProperty(std::uint16_t control, int* value) {
    Tell("get integer " + std::to_string(control));
    return CallReal<HRESULT>("_ZN32CAnalysisDialogAutomationOptions14GetOlePropertyEtPi", this, control, value);
}

HRESULT Options::GetOleProperty(std::uint16_t control, double* value) {
    Tell("get real " + std::to_string(control));
    return CallReal<HRESULT>("_ZN32CAnalysisDialogAutomationOptions14GetOlePropertyEtPd", this, control, value);
}

HRESULT Options::GetOleProperty(std::uint16_t control, IDispatch** value) {
    Tell("get object " + std::to_string(control));
    return CallReal<HRESULT>("_ZN32CAnalysisDialogAutomationOptions14GetOlePropertyEtPP9IDispatch", this, control,
                             value);
}

HRESULT Options::SetOleProperty(std::uint16_t control) {
    Tell("press " + std::to_string(control));
    return CallReal<HRESULT>("_ZN32CAnalysisDialogAutomationOptions14SetOlePropertyEt", this, control);
}

HRESULT Options::SetOleProperty(std::uint16_t control, int value) {
    Tell("put integer " + std::to_string(control) + " " + dialogtest::Shown(value));
    return CallReal<HRESULT>("_ZN32CAnalysisDialogAutomationOptions14SetOlePropertyEti", this, control, value);
}

HRESULT Options::SetOleProperty(std::uint16_t control, double value) {
    Tell("put real " + std::to_string(control) + " " + dialogtest::Shown(value));
    return CallReal<HRESULT>("_ZN32CAnalysisDialogAutomationOptions14SetOlePropertyEtd", this, control, value);
}

HRESULT Options::SetOleProperty(std::uint16_t control, const VARIANT& value) {
    Tell("put value " + std::to_string(control) + " " + dialogtest::TextOf(value));
    return CallReal<HRESULT>("_ZN32CAnalysisDialogAutomationOptions14SetOlePropertyEtRK7VARIANT", this, control,
                             &value);
}

bool VariantToTextList(const VARIANT& value, std::string& text) {
    Tell("text");
    return CallReal<bool>("_Z17VariantToTextListRK7VARIANTRNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE",
                          &value, &text);
}

int CAnalysisSupport::lookbr() {
    Tell("pass");
    return CallReal<int>("_ZN16CAnalysisSupport6lookbrEv", this);
}

void CAnalysisDialog::EnableWindow(HWND window, int id, bool enable) {
    Tell("controls");
    CallReal<void>("_ZN15CAnalysisDialog12EnableWindowEP15WindowHandleTagib", this, window, id, enable);
}

HRESULT CAnalysisModelessDialog::get_Name(BSTR* name) {
    Tell("name");
    return CallReal<HRESULT>("_ZN23CAnalysisModelessDialog8get_NameEPPDs", this, name);
}
