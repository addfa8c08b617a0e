#pragma once

#include <string>
#include <string_view>

#include "automation/DDNStartup.h"
#include "host/Log.h"
#include "platform/OwnedText.h"
#include "platform/OwnedVariant.h"
#include "platform/TextEncodings.h"
#include "tests/automation/CallsByName.h"
#include "tests/automation/OutputsBench.h"
#include "workbench/hosting/LogFile.h"

// What a script does with the startup dialog, and what it sees of that, as short texts.

namespace dialogtest {

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

/// The face of the startup dialog.
inline DDNStartup& FaceOf(CDefineTask& task) {
    return static_cast<DDNStartup&>(task);
}

inline std::string GetByName(CDefineTask& task, std::string_view name) {
    return CallByName(FaceOf(task), name, DispatchPropertyGet).Text();
}

inline std::string PutByName(CDefineTask& task, std::string_view name, const std::string& value) {
    const OwnedVariant given = ValueOf(value);
    return CallByName(FaceOf(task), name, DispatchPropertyPut, {given.Get()}).Text();
}

}  // namespace dialogtest
