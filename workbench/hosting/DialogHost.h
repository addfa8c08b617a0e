#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/AnalysisDialog.h"
#include "workbench/windows/Window.h"

class CAnalysisDoc;

/// The host's side of a dialog: its window, and what the host knows of it.
struct DialogHost {
    int Resource = 0;  ///< id of the dialog's resource
    std::unique_ptr<quillara::Window> TheWindow;  ///< null until it is made
    bool ResultsLocked = false;
    bool MenusEnabled = true;
    bool RanOutOfMemory = false;  ///< in one of its messages

    /// The host's side of a dialog.
    [[nodiscard]] static DialogHost& Of(const CAnalysisDialog& dialog) { return *dialog.Side; }
    /// The window of a dialog; null until it is made.
    [[nodiscard]] static quillara::Window* WindowOf(const CAnalysisDialog& dialog);
    /// The document whose analysis a dialog belongs to.
    [[nodiscard]] static CAnalysisDoc* DocumentOf(const CAnalysisDialog& dialog);
    /// Makes the window of a dialog from its module's resource, not started yet; false when there is no such resource.
    [[nodiscard]] static bool MakeWindow(CAnalysisDialog& dialog, const ModuleInstance* module);
    /// Tells the document's trace a call with its arguments.
    static void Trace(const CAnalysisDialog& dialog, const std::string& call);
};
