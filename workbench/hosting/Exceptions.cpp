// The exceptions that cross between the module and its host.

#include "host/Exceptions.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/OwnedText.h"
#include "workbench/documents/WideText.h"
#include "workbench/hosting/StatusTexts.h"

namespace {

/// Writes a text cut to a size with its zero; false when it is empty.
bool WriteCut(const std::string& from, char* text, unsigned size) {
    if (size == 0) {
        return false;
    }
    const std::size_t length = std::min<std::size_t>(from.size(), size - 1);
    std::memcpy(text, from.data(), length);
    text[length] = '\0';
    return !from.empty();
}

std::string MessageOf(const CException& exception) {
    char text[512];
    return exception.GetErrorMessage(text, sizeof(text)) ? text : std::string();
}

}  // namespace

CException::~CException() = default;

bool CException::GetErrorMessage(char* text, unsigned size) const {
    return WriteCut({}, text, size);
}

COleException::~COleException() = default;

bool COleException::GetErrorMessage(char* text, unsigned size) const {
    return WriteCut(quillara::StandardMessage(m_sc), text, size);
}

HRESULT COleException::Process(const CException* exception) {
    if (const auto* status = dynamic_cast<const COleException*>(exception)) {
        return status->m_sc;
    }
    const auto* dispatch = dynamic_cast<const COleDispatchException*>(exception);
    return dispatch != nullptr ? dispatch->m_scError : E_UNEXPECTED;
}

COleDispatchException::~COleDispatchException() = default;

bool COleDispatchException::GetErrorMessage(char* text, unsigned size) const {
    return WriteCut(m_strDescription, text, size);
}

void COleDispatchException::Process(EXCEPINFO* record, const CException* exception) {
    *record = {};
    const auto* dispatch = dynamic_cast<const COleDispatchException*>(exception);
    record->Code = dispatch != nullptr ? dispatch->m_wCode : std::uint16_t{0};
    record->Status = record->Code != 0 ? S_OK : COleException::Process(exception);
    record->Source = SysAllocString(u"Quillara");
    record->Description = SysAllocString(quillara::WideText(MessageOf(*exception)));
}

_com_error::_com_error(HRESULT status, CountedPointer<IErrorInfo> error) : Status(status), Object(std::move(error)) {}

_com_error::_com_error(const _com_error&) = default;

_com_error::~_com_error() = default;

std::string _com_error::Description() const {
    OwnedText text;
    if (Object) {
        static_cast<void>(Object->GetDescription(text.Put()));
    }
    return quillara::NarrowText(text.View());
}

std::string _com_error::ErrorMessage() const {
    return quillara::StandardMessage(Status);
}

win32_exception::win32_exception(std::string what, std::uint32_t code, FaultPointers pointers)
    : What(std::move(what)), Number(code), Where(pointers) {}

win32_exception::~win32_exception() = default;
