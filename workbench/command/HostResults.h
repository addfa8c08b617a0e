#pragma once

#include <functional>
#include <string>
#include <vector>

#include "workbench/command/DrillOptions.h"
#include "workbench/command/DrillSession.h"
#include "workbench/command/NamedVariables.h"
#include "workbench/documents/OutputCollection.h"
#include "workbench/scripting/SubsetStatistics.h"

namespace quillara {

/// What the host computes itself in one drill: statistics of the cases that are left, cross tables, groups side by
/// side.
class HostResults {
  public:
    /// All outlive it. Documents and remarks go to `outputs`.
    HostResults(DrillSession& session, const DataTable& table, OutputCollection& outputs);

    /// Makes the documents of a result of the host; false: it has nothing to show.
    bool Show(int result);
    /// Makes the documents of the cross tables that are asked for: a variable is cut as its last categorization says;
    /// one that is chosen as categorical is shown value by value. Throws DataError for a variable that isn't there or
    /// has too many categories.
    void ShowCrosses(const DrillOptions& options, const VariableChoice& chosen);
    /// Makes the box plots by group that are asked for; cut and refused as the cross tables.
    void ShowBoxes(const DrillOptions& options, const VariableChoice& chosen);
    /// Steps into every category of the variables, from the outside, and up again, and makes the tables of them;
    /// `showAll`, where there is one, makes full documents within each category. Throws DataError when a variable can't
    /// be drilled on.
    void ShowEach(const std::vector<std::string>& variables, const std::function<void()>& showAll);

  private:
    /// A walk through the categories of variables.
    struct Walk {
        std::vector<std::string> Variables;
        const std::function<void()>& ShowAll;
        GroupTables Tables;
        std::vector<std::string> Categories;  ///< of the steps that are taken
        std::int64_t Cases = 0;  ///< in the categories walked through so far
    };

    void Descend(Walk& walk);
    void Arrive(Walk& walk);
    void TellOfRest(const Walk& walk, std::int64_t cases);
    void Tell(Remark remark);
    void Add(SpreadsheetDocument document, int sequence, const char* result);

    DrillSession& Session;
    const DataTable& Table;
    OutputCollection& Outputs;
};

}  // namespace quillara
