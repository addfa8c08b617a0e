#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/recording/RecordedScript.h"
#include "workbench/windows/WindowCall.h"

namespace quillara {

/// A call of the startup window that is written once it is done: the answers that it asks for stand before it.
class HeldCall {
  public:
    explicit HeldCall(RecordedScript& script) : Script(script) {}

    /// Holds a call, and writes the one before.
    void Hold(WindowCall call);
    /// A command reaches the window: of the call that is held, sent behind it, or of no call.
    void HoldCommand(int control);
    void AddAnswer(std::string answer) { Answers.push_back(std::move(answer)); }
    /// A line that does the same as the call.
    void Replace(std::string line) { Line = std::move(line); }
    /// Writes the call that is held, if there is one.
    void Write();

  private:
    RecordedScript& Script;
    std::optional<WindowCall> Call;
    std::vector<std::string> Answers;
    std::string Line;
};

}  // namespace quillara
