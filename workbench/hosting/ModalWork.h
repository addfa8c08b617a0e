#pragma once

#include "workbench/windows/Window.h"

class CAnalysisDoc;

namespace quillara {

struct BrushingRun;
struct DialogState;

/// While one stands, the startup window can't be used.
class StartupBlock {
  public:
    explicit StartupBlock(DialogState& dialogs);
    StartupBlock(const StartupBlock&) = delete;
    StartupBlock& operator=(const StartupBlock&) = delete;
    ~StartupBlock();

  private:
    DialogState& Dialogs;
};

/// Starts a window and lets the user, or the script that stands in for one, work in it until it is closed. When nobody
/// answers it is cancelled. Gives what it was closed with. An exception of the script cancels the window and reaches
/// whoever runs the document's messages.
int RunModal(CAnalysisDoc* document, Window& window);

/// Lets the user, or the script, pick a bar; false when nobody does. What a script throws is as with RunModal.
bool RunBrushing(CAnalysisDoc* document, BrushingRun& run);

}  // namespace quillara
