#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace quillara {

class ResultDocument;
class Window;
struct BrushingRun;
struct DataTable;
struct Remark;

/// Whoever shows an exploration: hears what has changed, and lets the user answer. Nothing of it throws. It is called
/// while no result is being made, so that it may look at everything; it begins no command but from Changed on.
class ExplorationListener {
  public:
    ExplorationListener() = default;
    ExplorationListener(const ExplorationListener&) = delete;
    ExplorationListener& operator=(const ExplorationListener&) = delete;
    virtual ~ExplorationListener() = default;

    // The user answers

    /// Lets the user work in an open modal window until it is closed; false: it is to be cancelled.
    virtual bool WorkIn(Window& dialog) = 0;
    /// Lets the user pick a bar and an option; false: the user has left.
    virtual bool Pick(BrushingRun& run) = 0;
    /// Shows a message, and returns when it has been seen.
    virtual void ShowMessage(std::string_view text) = 0;

    // What has changed

    /// A document is there, to be shown in a window of its own.
    virtual void DocumentAppeared(ResultDocument& document) = 0;
    /// The content of a document is another.
    virtual void DocumentChanged(ResultDocument& document) = 0;
    /// The window of a document has been brought to the front: a button that was pressed again has made it anew.
    virtual void DocumentCameToFront(ResultDocument& document) = 0;
    /// A document is no longer shown: its window goes. It may be closed.
    virtual void DocumentWent(ResultDocument& document) = 0;
    /// All that a command, or a part of one, has done to documents is told.
    virtual void DocumentsTold() {}
    /// The analysis has made a data table.
    virtual void TableMade(std::shared_ptr<const DataTable> table) = 0;
    virtual void RemarkMade(const Remark& remark) = 0;
    /// A command has been done, or a part of one: controls, steps and settings may be others.
    virtual void Changed() = 0;

    // Long work

    virtual void WorkBegan(std::string_view text, std::int32_t total) = 0;
    /// Comes often: so much of the total is done. Exploration::Cancel may be called from within.
    virtual void WorkAdvanced(std::int32_t done) = 0;
    virtual void WorkEnded() = 0;
};

}  // namespace quillara
