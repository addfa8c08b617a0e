#include "workbench/hosting/ScriptDesk.h"

#include <utility>

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
    answer(window);
    return true;
}

void ScriptDesk::Keep(std::string_view message) {
    Kept.emplace_back(message);
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
