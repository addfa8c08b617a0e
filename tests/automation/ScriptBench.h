#pragma once

#include <functional>
#include <iomanip>
#include <sstream>
#include <string>
#include <string_view>

#include "host/Exceptions.h"
#include "platform/CountedPointer.h"
#include "platform/OwnedVariant.h"
#include "platform/TextEncodings.h"
#include "tests/automation/CallsByName.h"
#include "tests/dialogs/DialogBench.h"

namespace dialogtest {

/// What a script gets of a call: "ok", or the status and the text of its failure.
inline std::string Outcome(const std::function<HRESULT()>& call) {
    std::ostringstream text;
    const auto tell = [&text](HRESULT status) -> std::ostream& {
        return text << std::hex << static_cast<std::uint32_t>(status);
    };
    try {
        const HRESULT status = call();
        status == S_OK ? text << "ok" : tell(status);
    } catch (CException* exception) {
        char message[512];
        exception->GetErrorMessage(message, sizeof(message));
        tell(COleException::Process(exception)) << ' ' << message;
        exception->Delete();
    } catch (const std::exception& exception) {
        text << "exception: " << exception.what();
    }
    return text.str();
}

/// A value as plain text; "?" of one that has none.
inline std::string PlainText(const VARIANT& value) {
    OwnedVariant text;
    return Succeeded(VariantChangeType(*text.Put(), value, VariantType::Text)) ? NarrowText(ViewOf(text.Get().Text))
                                                                               : "?";
}

/// What a member of an object gives, as plain text; "?" when it can't be read.
inline std::string Read(IDispatch* object, std::string_view name) {
    const Answered answered = object == nullptr ? Answered{E_POINTER} : CallByName(*object, name, DispatchPropertyGet);
    return Succeeded(answered.Status) ? PlainText(answered.Value.Get()) : "?";
}

/// A startup dialog as a script has it: through the property calls of its host side.
class ScriptBench : public DialogBench {
  public:
    CAnalysisDialogAutomationOptions& Options() { return Dialog(); }
    std::string Write(int id, const OwnedVariant& value) {
        return Outcome([&] { return Options().SetOleProperty(static_cast<std::uint16_t>(id), value.Get()); });
    }
    std::string Write(int id, int value) { return Write(id, OwnedVariant::OfInteger(value)); }
    std::string Write(int id, double value) { return Write(id, OwnedVariant::OfReal(value)); }
    std::string Write(int id, std::u16string_view value) { return Write(id, OwnedVariant::OfText(value)); }
    std::string Press(int id) {
        return Outcome([&] { return Options().SetOleProperty(static_cast<std::uint16_t>(id)); });
    }
    std::string Shown(int id) {
        OwnedVariant value;
        const HRESULT status = Options().GetOleProperty(static_cast<std::uint16_t>(id), value.Put());
        return Succeeded(status) ? PlainText(value.Get()) : "?";
    }
    /// Presses a result button: the kind and name of its document, or how many there are; or how it fails.
    std::string Result(int id) {
        IDispatch* made = nullptr;
        std::string outcome = Outcome([&] { return Options().GetOleProperty(static_cast<std::uint16_t>(id), &made); });
        Made = CountedPointer<IDispatch>::Adopt(made);
        if (outcome != "ok") {
            return outcome;
        }
        const std::string count = Read(made, "Count");
        return count != "?" ? count + " documents" : Read(made, "Kind") + ": " + Read(made, "Name");
    }

    CountedPointer<IDispatch> Made;  ///< by the last Result
};

}  // namespace dialogtest
