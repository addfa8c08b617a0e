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

/// Calls in lists may be several.
bool IsOneCommand(const WindowCall& call) {
    return call.Name == "click" || call.Name == "command";
}

}  // namespace

void HeldCall::Hold(WindowCall call) {
    Write();
    Call = std::move(call);
    HasRun = false;
}

void HeldCall::HoldCommand(int control) {
    const bool isOfControl = Call && static_cast<int>(std::get<double>(Call->Arguments.front())) == control;
    const bool isOfCall = isOfControl && !(HasRun && IsOneCommand(*Call));
    if (!isOfCall && !(Call && IsPosted(control))) {
        Hold({"command", {static_cast<double>(control)}});
    }
    HasRun = true;
}

void HeldCall::AddDocuments(const std::vector<MadeDocument>& made, const std::string& what, bool standAlone) {
    Made.insert(Made.end(), made.begin(), made.end());
    What = what;
    StandAlone = standAlone;
}

void HeldCall::Write() {
    if (!Call) {
        return;
    }
    for (const std::string& answer : std::exchange(Answers, {})) {
        Script.Write("drill.Application.Answer(" + answer + ")");
    }
    RecordedScript::Line line = std::exchange(Line, {});
    if (line.Text.empty()) {
        line.Text = "drill.window." + Call->Name + "(" + PythonArguments(*Call) + ")";
    }
    RecordedScript::Line& written = Script.Write(std::move(line.Text));
    written.Result = std::move(line.Result);
    Documents.Enter(written, What, std::exchange(Made, {}), StandAlone);
    Call.reset();
}

}  // namespace quillara
