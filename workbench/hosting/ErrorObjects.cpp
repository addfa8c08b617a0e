// Error objects: what a failing member leaves for its caller.

#include <new>
#include <string>
#include <utility>

#include "host/ErrorReports.h"
#include "host/Exceptions.h"
#include "platform/CountedObject.h"
#include "platform/CountedPointer.h"
#include "platform/ErrorInfo.h"
#include "workbench/documents/WideText.h"

namespace {

constexpr std::u16string_view SourceName = u"Quillara";

HRESULT GiveText(std::u16string_view text, BSTR* target) {
    if (target == nullptr) {
        return E_POINTER;
    }
    *target = SysAllocString(text);
    return *target == nullptr ? E_OUTOFMEMORY : S_OK;
}

class ErrorObject final : public CountedObject<IErrorInfo> {
  public:
    ErrorObject(const GUID& interface, std::u16string description)
        : Interface(interface), Description(std::move(description)) {}

    HRESULT QueryInterface(const GUID& id, void** object) override {
        *object = id == IUnknown::Id || id == IErrorInfo::Id ? static_cast<IErrorInfo*>(this) : nullptr;
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    HRESULT GetGUID(GUID* interface) override {
        *interface = Interface;
        return S_OK;
    }
    HRESULT GetSource(BSTR* source) override { return GiveText(SourceName, source); }
    HRESULT GetDescription(BSTR* description) override { return GiveText(Description, description); }
    HRESULT GetHelpFile(BSTR* file) override { return GiveText({}, file); }
    HRESULT GetHelpContext(std::uint32_t* context) override {
        *context = 0;
        return S_OK;
    }

  private:
    GUID Interface;
    std::u16string Description;
};

thread_local CountedPointer<IErrorInfo> Current;

void LeaveError(const GUID& interface, std::u16string description) {
    const auto error = CountedPointer<IErrorInfo>::Adopt(new ErrorObject(interface, std::move(description)));
    SetErrorInfo(0, error.Get());
}

/// Leaves an error object if memory allows.
template <typename Describe>
void TryToLeave(const GUID& interface, const Describe& describe) noexcept {
    try {
        LeaveError(interface, describe());
    } catch (const std::bad_alloc&) {
        SetErrorInfo(0, nullptr);
    }
}

}  // namespace

HRESULT SetErrorInfo(std::uint32_t reserved, IErrorInfo* error) {
    if (reserved != 0) {
        return E_INVALIDARG;
    }
    Current = CountedPointer<IErrorInfo>::Share(error);
    return S_OK;
}

HRESULT GetErrorInfo(std::uint32_t reserved, IErrorInfo** error) {
    if (reserved != 0 || error == nullptr) {
        return E_INVALIDARG;
    }
    *error = std::exchange(Current, {}).Detach();
    return *error == nullptr ? S_FALSE : S_OK;
}

HRESULT DualHandleException(const GUID& interface, const CException* exception) noexcept {
    const HRESULT status = COleException::Process(exception);
    TryToLeave(interface, [&] {
        char text[512];
        return quillara::WideText(exception->GetErrorMessage(text, sizeof(text)) ? std::string(text)
                                                                                 : _com_error(status).ErrorMessage());
    });
    return status;
}

HRESULT DispatchReportError(const GUID& interface, std::string_view text) noexcept {
    TryToLeave(interface, [text] { return quillara::WideText(text); });
    return DISP_E_EXCEPTION;
}

HRESULT DispatchReportError(const GUID& interface, std::u16string_view text) noexcept {
    TryToLeave(interface, [text] { return std::u16string(text); });
    return DISP_E_EXCEPTION;
}
