#pragma once

#include <memory>

namespace quillara {

class AnalysisDocument;

/// Lets go of what holds an analysis, its document among it: at once, or, when a script closes the analysis from within
/// one of its own commands, behind that command. For scripts it has closed in either case.
void LetGo(AnalysisDocument& document, std::shared_ptr<void> holder);

/// What a script does in an analysis. At the end of the outermost one those that had to wait are let go.
class ScriptAct {
  public:
    ScriptAct() { ++Running; }
    ScriptAct(const ScriptAct&) = delete;
    ScriptAct& operator=(const ScriptAct&) = delete;
    ~ScriptAct();

    [[nodiscard]] static bool Runs() { return Running > 0; }

  private:
    static int Running;
};

}  // namespace quillara
