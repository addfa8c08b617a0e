#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/command/DrillOptions.h"
#include "workbench/command/DrillSession.h"
#include "workbench/command/NamedVariables.h"
#include "workbench/documents/OutputCollection.h"
#include "workbench/recording/SessionRecorder.h"
#include "workbench/scripting/SubsetStatistics.h"

namespace quillara {

/// What the host computes itself in one drill: statistics of the cases that are left, cross tables, groups side by
/// side.
class HostResults {
  public:
    /// All outlive it. Documents go to `outputs`, and what makes them in a script to the recorder, unless it is null.
    HostResults(DrillSession& session, const DataTable& table, OutputCollection& outputs, SessionRecorder* recorder);

    /// Makes the documents of a result of the host; false: it has nothing to show.
    bool Show(int result);
    /// Makes the documents of the cross tables that are asked for: a variable is cut as its last categorization says;
    /// one that is chosen as categorical is shown value by value. Throws DataError for a variable that isn't there or
    /// has too many categories.
    void ShowCrosses(const DrillOptions& options, const VariableChoice& chosen);
    /// Makes the box plots by group that are asked for; cut and refused as the cross tables.
    void ShowBoxes(const DrillOptions& options, const VariableChoice& chosen);
    /// Steps into every category of the variables of --each, from the outside, and up again, and makes the tables of
    /// them; `showAll`, where there is one, makes full documents within each category, behind these, on a walk of its
    /// own. Throws DataError when a variable can't be drilled on.
    void ShowEach(const DrillOptions& options, const std::function<void()>& showAll);

  private:
    void Record(const std::string& line);
    void RecordRemarks(std::string_view code);
    void RecordDistributions(const ComparedVariables& open);
    [[nodiscard]] std::string CutArgument(const std::vector<std::string>& names, const DrillOptions& options,
                                          const VariableChoice& chosen) const;
    void Add(SpreadsheetDocument document, int sequence, const char* result);

    DrillSession& Session;
    const DataTable& Table;
    OutputCollection& Outputs;
    SessionRecorder* Recorder;
};

}  // namespace quillara
