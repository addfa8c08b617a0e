#pragma once

#include <string>
#include <string_view>
#include <vector>

class CAnalysisDoc;
struct ControlRow;

namespace quillara {

class ResultDocument;
class Window;
struct BrushingRun;
struct DataTable;
struct WindowCall;

/// The value of a control as the recorder of steps gets it.
struct RecordedValue {
    const ControlRow* Row;
    std::string Text;
};

/// Hears what people and scripts do in the startup dialog of an analysis, as it can be written as a script. None of its
/// operations may change anything in the analysis, or throw but for want of memory; the values of its controls may be
/// asked for.
class StepRecorder {
  public:
    StepRecorder() = default;
    StepRecorder(const StepRecorder&) = delete;
    StepRecorder& operator=(const StepRecorder&) = delete;
    virtual ~StepRecorder() = default;

    // Moments that the module tells

    /// A step is about to be taken by the action of a control: the values that the controls have, in the order of the
    /// control table; where the dialog has had one kept early, that one. Controls without a value are left out.
    virtual void RecordStep(CAnalysisDoc& document, const std::vector<RecordedValue>& values, int control) = 0;
    /// The method of a control is about to run.
    virtual void RecordMethod(CAnalysisDoc& document, int control) = 0;
    /// The button of a control has made results.
    virtual void RecordOutput(CAnalysisDoc& document, int control) = 0;

    // What the host itself delivers

    /// A command reaches the startup dialog, and is done, or ends for want of memory; those that it sends itself are
    /// told apart.
    virtual void BeginCommand(CAnalysisDoc& /*document*/, int /*control*/) {}
    virtual void EndCommand(CAnalysisDoc& /*document*/, int /*control*/) {}
    virtual void FailCommand(CAnalysisDoc& /*document*/, int /*control*/) {}
    /// The startup dialog sends itself a command within the one that runs.
    virtual void RecordSent(int /*control*/) {}
    /// A user does something in a window, the startup dialog or one that a command has opened.
    virtual void RecordCall(const Window& /*window*/, const WindowCall& /*call*/) {}
    /// A modal window has been closed.
    virtual void RecordAnswer(Window& /*window*/) {}
    /// A bar of a brushing graph has been picked.
    virtual void RecordPick(const BrushingRun& /*run*/) {}
    /// A result has gone into a document, new or already there; not while documents are brought up to date.
    virtual void RecordDocument(const ResultDocument& /*document*/) {}
    /// A document is about to be closed, not by its analysis.
    virtual void RecordClose(const ResultDocument& /*document*/) {}
    /// A user has closed a data table that the analysis has saved.
    virtual void RecordDataClose(const DataTable& /*table*/) {}
    /// A message is shown.
    virtual void RecordMessage(std::string_view /*text*/) {}
};

}  // namespace quillara
