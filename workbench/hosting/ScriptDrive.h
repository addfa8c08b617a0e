#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Automation.h"
#include "platform/CountedPointer.h"

namespace quillara {

class Window;

/// What has come of a press so far.
struct PressRecord {
    std::vector<CountedPointer<IDispatch>> Documents;  ///< routed or replaced, each once
    std::vector<std::string> Messages;
    std::vector<std::string> Unanswered;  ///< titles of the windows that nobody has answered
    bool LackedMemory = false;
    /// Works in the first modal window, before the answers of the script: the value that is being written. May be
    /// empty.
    std::function<void(Window&)> FirstAnswer;

    /// Takes a document, unless it has it already.
    void Add(CountedPointer<IDispatch> document);
};

/// How scripts drive one analysis.
struct ScriptDrive {
    bool IsDriven = false;  ///< from the first press or write of a script until a person's next message
    int Scopes = 0;  ///< within one, messages are the script's
    bool OpensDialogs = false;  ///< what it does now opens dialogs as for a person; they ask the script's answers
    PressRecord* Press = nullptr;  ///< what runs now; null: no press

    /// A message has reached the dialog: a person's ends what a script began.
    void HearMessage() { IsDriven = IsDriven && Scopes > 0; }
};

/// Within one, messages that reach the dialog are a script's.
class ScriptScope {
  public:
    explicit ScriptScope(ScriptDrive& drive) : Drive(drive) {
        ++Drive.Scopes;
        Drive.IsDriven = true;
    }
    ScriptScope(const ScriptScope&) = delete;
    ScriptScope& operator=(const ScriptScope&) = delete;
    ~ScriptScope() { --Drive.Scopes; }

  private:
    ScriptDrive& Drive;
};

}  // namespace quillara
