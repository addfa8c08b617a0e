#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

#include "automation/DDNStartup.h"
#include "host/Log.h"
#include "platform/OwnedText.h"
#include "platform/OwnedVariant.h"
#include "platform/TextEncodings.h"
#include "tests/automation/OutputsBench.h"
#include "workbench/hosting/LogFile.h"

// What a script does with the startup dialog, and what it sees of that, as short texts.

namespace dialogtest {

/// "80004005", or "ok", or "1" of S_FALSE.
inline std::string StatusText(HRESULT status) {
    char text[16];
    std::snprintf(text, sizeof(text), status < 0 ? "%08x" : "%x", static_cast<unsigned>(status));
    return status == S_OK ? "ok" : text;
}

/// The error object that was left, which is taken away; empty without one.
inline std::string TakeError() {
    IErrorInfo* left = nullptr;
    if (GetErrorInfo(0, &left) != S_OK) {
        return {};
    }
    const auto error = CountedPointer<IErrorInfo>::Adopt(left);
    OwnedText text;
    error->GetDescription(text.Put());
    return NarrowText(text.View());
}

/// The lines that the log has kept since the last time, without process and thread.
inline std::string TakeLog() {
    std::string text;
    for (const quillara::LogLine& line : quillara::KeptLogLines()) {
        EXPECT_EQ(line.Process, GetCurrentProcessId());
        EXPECT_EQ(line.Thread, GetCurrentThreadId());
        text += (text.empty() ? "" : " / ") + std::to_string(line.Level) + " " + std::to_string(line.Code) + " " +
                line.Text;
    }
    quillara::ForgetKeptLogLines();
    return text;
}

/// A value that is given to a member: a number, true or false, nothing, or the text in quotes.
inline OwnedVariant ValueOf(const std::string& text) {
    if (text.empty()) {
        return {};
    }
    if (text == "true" || text == "false") {
        return OwnedVariant(BooleanVariant(text == "true"));
    }
    if (text.front() == '\'') {
        return OwnedVariant::OfText(WideText(text.substr(1, text.size() - 2)));
    }
    if (text == "object") {
        return OwnedVariant::OfObject(nullptr);
    }
    return text.find('.') == std::string::npos ? OwnedVariant::OfInteger(std::stoi(text))
                                               : OwnedVariant::OfReal(std::stod(text));
}

/// A value that a member has given: a text in quotes, a number, or "object".
inline std::string TextOf(const VARIANT& value) {
    if (value.Type == VariantType::Text) {
        return "'" + NarrowText(ViewOf(value.Text)) + "'";
    }
    if (value.Type == VariantType::Dispatch) {
        return value.Dispatch == nullptr ? "nothing" : "object";
    }
    OwnedVariant text;
    return Succeeded(VariantChangeType(*text.Put(), value, VariantType::Text)) ? NarrowText(ViewOf(text.Get().Text))
                                                                               : "?";
}

/// How a call by name ended.
struct Answered {
    HRESULT Status;
    std::string Text;  ///< the value that came, or of a failure its status
};

/// Calls a member by its name. A failure is told by the status of the member, where the call has one of its own.
inline Answered CallByName(IDispatch& face, std::string_view name, DispatchFlag use, VARIANT* arguments = nullptr,
                           std::uint32_t count = 0) {
    const std::u16string wide = WideText(name);
    const char16_t* names = wide.c_str();
    DISPID member = 0;
    if (const HRESULT status = face.GetIDsOfNames(GUID_NULL, &names, 1, NeutralLanguage, &member); status != S_OK) {
        return {status, StatusText(status)};
    }
    DISPID put = PropertyPutArgument;
    const bool isPut = use == DispatchPropertyPut;
    const DISPPARAMS parameters{arguments, isPut ? &put : nullptr, count, isPut ? 1U : 0U};
    OwnedVariant result;
    EXCEPINFO exception;
    std::uint32_t bad = 99;
    HRESULT status = face.Invoke(member, GUID_NULL, NeutralLanguage, use, parameters, result.Put(), &exception, &bad);
    if (status == DISP_E_EXCEPTION && exception.Status != S_OK) {
        status = exception.Status;
    }
    SysFreeString(exception.Source);
    SysFreeString(exception.Description);
    std::string text =
        Succeeded(status) && result.Get().Type != VariantType::Empty ? TextOf(result.Get()) : StatusText(status);
    return {status, text + (bad == 99 ? "" : " argument " + std::to_string(bad))};
}

/// The face of the startup dialog.
inline DDNStartup& FaceOf(CDefineTask& task) {
    return static_cast<DDNStartup&>(task);
}

inline std::string GetByName(CDefineTask& task, std::string_view name) {
    return CallByName(FaceOf(task), name, DispatchPropertyGet).Text;
}

inline std::string PutByName(CDefineTask& task, std::string_view name, const std::string& value) {
    VARIANT given = ValueOf(value).Detach();
    const Answered answered = CallByName(FaceOf(task), name, DispatchPropertyPut, &given, 1);
    VariantClear(given);
    return answered.Text;
}

}  // namespace dialogtest
