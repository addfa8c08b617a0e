// What a host answers that no script drives.

#include "host/DialogAutomation.h"
#include "host/Exceptions.h"

// clang-format off
using Options = CAnalysisDialogAutomationOptions;
HRESULT Options::GetOleProperty(std::uint16_t, VARIANT*) { return E_NOTIMPL; }
HRESULT Options::GetOleProperty(std::uint16_t, double*) { return E_NOTIMPL; }
HRESULT Options::GetOleProperty(std::uint16_t, BSTR*) { return E_NOTIMPL; }
HRESULT Options::GetOleProperty(std::uint16_t, int*) { return E_NOTIMPL; }
HRESULT Options::GetOleProperty(std::uint16_t, IDispatch**) { return E_NOTIMPL; }
HRESULT Options::SetOleProperty(std::uint16_t) { return E_NOTIMPL; }
HRESULT Options::SetOleProperty(std::uint16_t, double) { return E_NOTIMPL; }
HRESULT Options::SetOleProperty(std::uint16_t, const char16_t*) { return E_NOTIMPL; }
HRESULT Options::SetOleProperty(std::uint16_t, int) { return E_NOTIMPL; }
HRESULT Options::SetOleProperty(std::uint16_t, const VARIANT&) { return E_NOTIMPL; }
HRESULT Options::SetOleProperty(std::uint16_t, IDispatch*) { return E_NOTIMPL; }

bool CException::GetErrorMessage(char*, unsigned) const { return false; }
bool COleException::GetErrorMessage(char*, unsigned) const { return false; }
CException::~CException() = default;
COleException::~COleException() = default;
_com_error::~_com_error() = default;
win32_exception::~win32_exception() = default;
// clang-format on
