#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "workbench/documents/StepTaken.h"

class CAnalysisDoc;

namespace quillara {

class AnalysisDocument;

/// The steps of an analysis, by whatever road they come: buttons, bars that are picked, scripts.
class StepHistory {
  public:
    /// Gives the variable that a list of the startup dialog has as its value.
    using ValueOfList = std::function<std::string(int list)>;
    /// What a control does is about to be done in the command that runs: a step by it counts as taken at once.
    void Begin(int control, const ValueOfList& valueOf);
    /// A command of the analysis has ended: its step gets what is known now, or goes if it hasn't been taken.
    void EndCommand(AnalysisDocument& document);
    /// Whether steps that are taken from now on are left out. Whoever sets it leaves the steps in force as they were.
    void SetAside(bool isAside) { IsAside = isAside; }
    /// The table is another one.
    void Forget() { *this = {}; }

    [[nodiscard]] const std::vector<StepTaken>& Taken() const { return Steps; }

  private:
    std::vector<StepTaken> Steps;
    std::size_t Before = 0;  // conditions in force when the last command had ended
    bool BeginsAnew = false;  // the steps have been undone by a new choice of variables
    bool IsAside = false;
    bool IsPending = false;  // the newest step isn't told whole
};

/// Those of a document.
[[nodiscard]] StepHistory& StepsOf(CAnalysisDoc* document);

/// As long as it lives, steps of an analysis are no part of its history.
class StepsAside {
  public:
    explicit StepsAside(AnalysisDocument& document);
    StepsAside(const StepsAside&) = delete;
    StepsAside& operator=(const StepsAside&) = delete;
    ~StepsAside() { History.SetAside(false); }

  private:
    StepHistory& History;
};

}  // namespace quillara
