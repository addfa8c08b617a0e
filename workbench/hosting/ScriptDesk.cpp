#include "workbench/hosting/ScriptDesk.h"

#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

constexpr std::size_t MostMessages = 1000;

}  // namespace

bool ScriptDesk::WorkIn(Window& window) {
    if (Answers.empty()) {
        return false;
    }
    const Answer answer = std::move(Answers.front());
    Answers.pop_front();
    const Work* work = std::get_if<Work>(&answer);
    if (work == nullptr) {
        throw UsageError("The dialog " + Quoted(window.Resource().Title) + " has opened where a bar was to be picked.");
    }
    (*work)(window);
    return true;
}

bool ScriptDesk::PickIn(BrushingRun& run) {
    if (Answers.empty() || !std::holds_alternative<Pick>(Answers.front())) {
        return false;
    }
    const Pick pick = std::get<Pick>(std::move(Answers.front()));
    Answers.pop_front();
    return pick(run);
}

void ScriptDesk::Keep(DeskMessage message) {
    Kept.push_back(std::move(message));
    ++Counted;
    if (Kept.size() > MostMessages) {
        Kept.pop_front();
    }
}

ScriptDesk& TheScriptDesk() {
    static ScriptDesk desk;
    return desk;
}

}  // namespace quillara
