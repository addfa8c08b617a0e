#include "workbench/recording/HeldCall.h"

#include <utility>

#include "resources/ControlIds.h"
#include "workbench/recording/PythonText.h"

namespace quillara {
namespace {

/// Commands that dialogs post to themselves.
constexpr bool IsPosted(int control) {
    return control == BoundariesButton || control == BrushButton;
}

}  // namespace

void HeldCall::Hold(WindowCall call) {
    Write();
    Call = std::move(call);
}

void HeldCall::HoldCommand(int control) {
    const bool isOfCall = Call && static_cast<int>(std::get<double>(Call->Arguments.front())) == control;
    if (!isOfCall && !(Call && IsPosted(control))) {
        Hold({"command", {static_cast<double>(control)}});
    }
}

void HeldCall::Write() {
    if (!Call) {
        return;
    }
    for (const std::string& answer : std::exchange(Answers, {})) {
        Script.Write("drill.Application.Answer(" + answer + ")");
    }
    const std::string line = std::exchange(Line, {});
    Script.Write(line.empty() ? "drill.window." + Call->Name + "(" + PythonArguments(*Call) + ")" : line);
    Call.reset();
}

}  // namespace quillara
