#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "workbench/hosting/ScriptDrive.h"

class CAnalysisDialog;
class CAnalysisModelessDialog;

namespace quillara {

/// What has come of a press, and what its window answered to the message.
struct PressOutcome {
    std::int64_t Result = 0;
    PressRecord Record;
};

/// Lets a script act in the window of a dialog, then runs the messages that wait. Throws a COleException of
/// CO_E_OBJNOTCONNECTED when the window has closed, and of RPC_E_SERVERCALL_RETRYLATER from inside another press or
/// while a command or a modal dialog waits; std::bad_alloc, with a text for people, when memory lacked; and what an
/// answer to a modal dialog threw. `firstAnswer` may be empty.
PressOutcome ActForScript(CAnalysisDialog& dialog, const std::function<std::int64_t(Window&)>& act,
                          std::function<void(Window&)> firstAnswer = {});

/// As ActForScript, but dialogs open as for a person and ask the script's answers, unless they are left to a person
/// anyway.
PressOutcome ActAsPerson(CAnalysisModelessDialog& dialog, const std::function<std::int64_t(Window&)>& act,
                         std::function<void(Window&)> firstAnswer = {});

/// What people and scripts are told of a press that hasn't made what it is pressed for.
[[nodiscard]] std::string FailureOf(const PressRecord& press);

/// What a press gives to a script: its document, or a collection of several. Throws a COleDispatchException that says
/// why when there is none.
[[nodiscard]] CountedPointer<IDispatch> ResultOf(PressRecord press);

}  // namespace quillara
