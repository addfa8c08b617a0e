#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/recording/RecordedDocuments.h"
#include "workbench/recording/RecordedScript.h"
#include "workbench/windows/WindowCall.h"

namespace quillara {

/// A call of the startup window that is written once it is done: the answers that it asks for stand before it.
class HeldCall {
  public:
    HeldCall(RecordedScript& script, RecordedDocuments& documents) : Script(script), Documents(documents) {}

    /// Holds a call, and writes the one before.
    void Hold(WindowCall call);
    /// A command reaches the window: of the call that is held, sent behind it, or of no call.
    void HoldCommand(int control);
    void AddAnswer(std::string answer) { Answers.push_back(std::move(answer)); }
    /// A line that does the same as the call, and a name for what it gives.
    void Replace(std::string line, std::string result) { Line = {std::move(line), true, std::move(result)}; }
    /// The call has made these documents, which are `what` for people.
    void AddDocuments(const std::vector<MadeDocument>& made, const std::string& what, bool standAlone);
    /// Writes the call that is held, if there is one.
    void Write();

  private:
    RecordedScript& Script;
    std::optional<WindowCall> Call;
    bool HasRun = false;  ///< a command of the call
    std::vector<std::string> Answers;
    RecordedScript::Line Line;
    std::vector<MadeDocument> Made;
    std::string What;
    bool StandAlone = false;
    RecordedDocuments& Documents;
};

}  // namespace quillara
