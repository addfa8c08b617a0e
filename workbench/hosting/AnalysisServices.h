#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class CGraphBrushRgnGraph;

namespace quillara {

class ResultDocument;
class SettingsStore;
class StepRecorder;
class Window;
struct DataTable;
struct Remark;

/// A cycle of picking bars of a graph.
struct BrushingRun {
    ResultDocument& Document;
    CGraphBrushRgnGraph& Regions;  ///< the bars, the one selected at the start, and then the one picked
    std::vector<std::string> Options;  ///< what can be done with a bar
    int Choice = 0;  ///< the option taken
};

/// What an analysis asks of the people and programs around it. Members left empty have the quiet outcome. None
/// but WorkIn may throw, other than for an allocation failure.
struct AnalysisServices {
    /// Lets the user work in an open modal window: a script acts in it and gives true, or gives false to leave it to be
    /// cancelled; a desktop gives true once the user has closed it. Asked again while the window stays open. What it
    /// throws cancels the window, and AnalysisDocument::RunMessages throws it again.
    std::function<bool(Window&)> WorkIn;
    /// Shows a message.
    std::function<void(std::string_view)> ShowMessage;
    /// Hears what the host notices about the analysis, each remark once.
    std::function<void(const Remark&)> HearRemark;
    /// Called when a command lacked memory, with a message or without: what it has shown or changed can't be relied on.
    std::function<void()> MemoryLacked;
    /// Takes a finished result document that goes the normal way; a reference to it may be kept. The analysis is in the
    /// midst of its result: this may not call back into it.
    std::function<void(ResultDocument&)> TakeDocument;
    /// Hears of a document that the analysis keeps to itself, standing alone, whenever its content is new; with the
    /// same restriction. It may be gone again when the command has ended.
    std::function<void(ResultDocument&)> HearStandAlone;
    /// Lets the user pick a bar of a brushing graph: a script marks the picked region and the option, and gives true;
    /// false: the user has left, which is also what happens without this service.
    std::function<bool(BrushingRun&)> Brush;
    /// Takes a finished data table.
    std::function<void(std::shared_ptr<const DataTable>)> TakeData;
    /// Where settings are kept from run to run; outlives the document. Null: they last as long as the document.
    SettingsStore* Settings = nullptr;

    /// Whether the user asked to cancel; asked once per case that is used.
    std::function<bool()> BreakRequested;
    /// The same as a flag, for hosts that cancel from elsewhere: looked at once per case read singly and once per
    /// block. Outlives the document; null: none.
    const std::atomic<bool>* BreakFlag = nullptr;
    /// Progress of a pass: started with a text and a total, advanced to how many cases are done, ended.
    std::function<void(std::string_view text, std::int32_t total)> ProgressStarted;
    std::function<void(std::int32_t done)> ProgressAdvanced;
    std::function<void()> ProgressEnded;

    /// Hears what is done in the startup dialog, from its start on; outlives the document. Null: nobody records.
    StepRecorder* Recorder = nullptr;
    /// Gets the calls of the dialog services, in words, as they come ("LockResults", "DoModal 4818"); for diagnosis.
    std::function<void(std::string_view call)> Trace;
};

}  // namespace quillara
