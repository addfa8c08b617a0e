#pragma once

#include <string>
#include <vector>

class CAnalysisDoc;
struct ControlRow;

namespace quillara {

/// The value of a control as the recorder of steps gets it.
struct RecordedValue {
    const ControlRow* Row;
    std::string Text;
};

/// Hears what people and scripts do in the startup dialog of an analysis, as it can be written as a script. None of its
/// operations may call back into the analysis or throw but for want of memory.
class StepRecorder {
  public:
    StepRecorder() = default;
    StepRecorder(const StepRecorder&) = delete;
    StepRecorder& operator=(const StepRecorder&) = delete;
    virtual ~StepRecorder() = default;

    /// A step is about to be taken by the action of a control: the values that the controls have, in the order of the
    /// control table; where the dialog has had one kept early, that one. Controls without a value are left out.
    virtual void RecordStep(CAnalysisDoc& document, const std::vector<RecordedValue>& values, int control) = 0;
    /// The method of a control is about to run.
    virtual void RecordMethod(CAnalysisDoc& document, int control) = 0;
    /// The button of a control has made results.
    virtual void RecordOutput(CAnalysisDoc& document, int control) = 0;
};

}  // namespace quillara
