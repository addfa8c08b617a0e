#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Automation.h"
#include "platform/OwnedText.h"
#include "platform/OwnedVariant.h"
#include "platform/TextEncodings.h"

// Members of objects, called by their names as scripts call them.

namespace dialogtest {

/// "80004005", or "ok", or "1" of S_FALSE.
inline std::string StatusText(HRESULT status) {
    char text[16];
    std::snprintf(text, sizeof(text), status < 0 ? "%08x" : "%x", static_cast<unsigned>(status));
    return status == S_OK ? "ok" : text;
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
    static constexpr std::uint32_t NoArgument = 99;

    HRESULT Status = S_OK;  ///< of a failing member its own, where the call has one of its own
    OwnedVariant Value{};
    std::string Failure{};  ///< what the exception record says
    std::uint32_t BadArgument = NoArgument;

    /// The value that came, or of a failure its status.
    [[nodiscard]] std::string Text() const {
        const std::string text =
            Succeeded(Status) && Value.Get().Type != VariantType::Empty ? TextOf(Value.Get()) : StatusText(Status);
        return text + (BadArgument == NoArgument ? "" : " argument " + std::to_string(BadArgument));
    }
};

/// Calls a member by its name, with arguments in the order in which a script writes them.
inline Answered CallByName(IDispatch& object, std::string_view name, DispatchFlag use,
                           std::vector<VARIANT> arguments = {}) {
    Answered answered;
    const std::u16string wide = WideText(name);
    const char16_t* names = wide.c_str();
    DISPID member = 0;
    answered.Status = object.GetIDsOfNames(GUID_NULL, &names, 1, NeutralLanguage, &member);
    if (answered.Status != S_OK) {
        return answered;
    }
    std::ranges::reverse(arguments);
    DISPID put = PropertyPutArgument;
    const bool isPut = use == DispatchPropertyPut;
    const DISPPARAMS parameters{arguments.data(), isPut ? &put : nullptr, static_cast<std::uint32_t>(arguments.size()),
                                isPut ? 1U : 0U};
    EXCEPINFO exception;
    answered.Status = object.Invoke(member, GUID_NULL, NeutralLanguage, use, parameters, answered.Value.Put(),
                                    &exception, &answered.BadArgument);
    if (answered.Status == DISP_E_EXCEPTION && exception.Status != S_OK) {
        answered.Status = exception.Status;
    }
    const OwnedText source(exception.Source), description(exception.Description);
    answered.Failure = NarrowText(description.View());
    return answered;
}

}  // namespace dialogtest
