#include "workbench/hosting/StatusTexts.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

namespace quillara {
namespace {

struct StatusRow {
    HRESULT Status;
    std::string_view Message;
};

// clang-format off
constexpr auto StatusMessages = std::to_array<StatusRow>({
    {S_OK,                          "The operation completed successfully."},
    {S_FALSE,                       "The operation gave nothing, or less than was asked for."},
    {E_NOTIMPL,                     "Not implemented"},
    {E_NOINTERFACE,                 "No such interface supported"},
    {E_POINTER,                     "Invalid pointer"},
    {E_FAIL,                        "Unspecified error"},
    {E_UNEXPECTED,                  "Catastrophic failure"},
    {RPC_E_SERVERCALL_RETRYLATER,   "The program is busy with another call; try again when that is done."},
    {DISP_E_MEMBERNOTFOUND,         "Member not found."},
    {DISP_E_PARAMNOTFOUND,          "Parameter not found."},
    {DISP_E_TYPEMISMATCH,           "Type mismatch."},
    {DISP_E_UNKNOWNNAME,            "Unknown name."},
    {DISP_E_NONAMEDARGS,            "No named arguments."},
    {DISP_E_BADVARTYPE,             "Bad variable type."},
    {DISP_E_EXCEPTION,              "Exception occurred."},
    {DISP_E_OVERFLOW,               "Out of present range."},
    {DISP_E_BADINDEX,               "Invalid index."},
    {DISP_E_BADPARAMCOUNT,          "Invalid number of parameters."},
    {TYPE_E_ELEMENTNOTFOUND,        "Element not found."},
    {CO_E_OBJNOTCONNECTED,          "Object is not connected to server"},
    {E_ACCESSDENIED,                "Access is denied."},
    {E_OUTOFMEMORY,                 "There is not enough memory; close other programs and try again."},
    {E_INVALIDARG,                  "The parameter is incorrect."},
});
// clang-format on

// Codes of interfaces that are their own to give, which older languages number from 0.
constexpr std::uint32_t FirstOwnCode = 0x80040200;
constexpr std::uint32_t LastOwnCode = 0x8004FFFF;
constexpr std::uint32_t OwnCodesBegin = 512;

}  // namespace

std::string_view SystemMessage(HRESULT status) {
    const auto* row = std::ranges::find(StatusMessages, status, &StatusRow::Status);
    return row == StatusMessages.end() ? std::string_view() : row->Message;
}

std::string StandardMessage(HRESULT status) {
    if (const std::string_view known = SystemMessage(status); !known.empty()) {
        return std::string(known);
    }
    const auto code = static_cast<std::uint32_t>(status);
    const std::uint32_t low = code & 0xFFFF;
    char text[40];
    if (code >= FirstOwnCode && code <= LastOwnCode && low != OwnCodesBegin) {
        std::snprintf(text, sizeof(text), "IDispatch error #%d", static_cast<int>(low - OwnCodesBegin));
    } else {
        std::snprintf(text, sizeof(text), "Unknown error 0x%0lX", static_cast<unsigned long>(code));
    }
    return text;
}

}  // namespace quillara
