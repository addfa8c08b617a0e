#pragma once

#include <cstdint>
#include <map>
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
    const ControlRow* Controls = nullptr;  ///< what its controls are to scripts and recorders; null: nothing
    std::map<int, std::string> EarlyValues;  ///< of controls, kept for the record that follows
    std::shared_ptr<CAnalysisSupport> Analysis;  ///< lives as long as the dialog; null until the host has the dialog

    /// Whether the window has been closed or has gone.
    [[nodiscard]] bool IsClosed() const { return TheWindow == nullptr || TheWindow->IsClosed(); }
    /// Ends the window.
    void EndWindow() { TheWindow.reset(); }

    /// The host's side of a dialog.
    [[nodiscard]] static DialogHost& Of(const CAnalysisDialog& dialog) { return *dialog.Side; }
    /// The window of a dialog; null until it is made.
    [[nodiscard]] static quillara::Window* WindowOf(const CAnalysisDialog& dialog);
    /// The document whose analysis a dialog belongs to.
    [[nodiscard]] static CAnalysisDoc* DocumentOf(const CAnalysisDialog& dialog);
    /// The analysis that it belongs to.
    [[nodiscard]] static CAnalysisSupport& AnalysisOf(const CAnalysisDialog& dialog) { return dialog.Owner; }
    /// Makes the window of a dialog from its module's resource, not started yet; false when there is no such resource.
    [[nodiscard]] static bool MakeWindow(CAnalysisDialog& dialog, const ModuleInstance* module);
    /// Tells the document's trace a call with its arguments.
    static void Trace(const CAnalysisDialog& dialog, const std::string& call);
};
