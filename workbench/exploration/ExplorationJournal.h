#pragma once

#include <vector>

#include "workbench/recording/SessionRecorder.h"
#include "workbench/windows/WindowCall.h"

namespace quillara {

/// Something that a person has done in an exploration.
struct JournalEntry {
    static constexpr int NoDialog = 0;
    static constexpr const char* CloseCall = "close";

    int Dialog = NoDialog;  ///< id of the resource of the window that it was done in; NoDialog: in none
    /// In no window: "pick BAR OPTION" in a brushing graph, "leave" it, "close PLACE" of a document; and at the very
    /// beginning "begin AUTO", whether documents are updated from the start.
    WindowCall Call;
};

/// Records as a SessionRecorder, and notes besides what is done, call by call, so that it can be done again.
class ExplorationJournal final : public SessionRecorder {
  public:
    using SessionRecorder::SessionRecorder;

    [[nodiscard]] const std::vector<JournalEntry>& Entries() const { return Done; }
    void Note(JournalEntry entry) { Done.push_back(std::move(entry)); }

    void RecordCall(const Window& window, const WindowCall& call) override;
    void RecordPick(const BrushingRun& run) override;

  private:
    std::vector<JournalEntry> Done;
};

}  // namespace quillara
