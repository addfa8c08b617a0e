#pragma once

#include <functional>
#include <string>

#include "workbench/command/DrillOptions.h"
#include "workbench/command/DrillSession.h"
#include "workbench/data/DataTable.h"
#include "workbench/documents/OutputCollection.h"

namespace quillara {

/// Takes the steps that are asked for, by the buttons of the session, and keeps the list of them with the cases that
/// each one leaves.
class StepTaking {
  public:
    /// All outlive it. `notice` hears what is remarkable about a choice.
    StepTaking(DrillSession& session, const DataTable& table, OutputCollection& outputs,
               std::function<void(const Remark&)> notice);

    /// Whether the step was taken: one that can't be is passed over with a remark where `skipsImpossible` allows it,
    /// and throws ImpossibleStep elsewhere.
    [[nodiscard]] bool Take(const DrillStep& step, bool skipsImpossible);

  private:
    [[nodiscard]] short NumberOf(const std::string& name) const;
    void Go(const DrillStep& step);
    void GoDown(const std::string& name, const std::string& category);
    void GoUp(const std::string& name);

    DrillSession& Session;
    const DataTable& Table;
    OutputCollection& Outputs;
    const std::function<void(const Remark&)> Notice;
};

}  // namespace quillara
