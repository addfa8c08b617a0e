#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "bench/FloorColumns.h"
#include "engine/DrillDown.h"
#include "workbench/data/DataTable.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/AnalysisDocument.h"

/// What one benchmark runs on.
struct BenchCase {
    int Steps = 0;  ///< drill steps in force, on the first categorical variables
    bool Weighted = false;  ///< a fractional weight is in force
    bool Services = true;  ///< the host offers columns and what else makes passes quick
    int Threads = 1;
};

/// Number of values of each categorical variable.
inline constexpr int CategoricalValues[] = {2, 5, 9, 16, 42, 500};
inline constexpr int CategoricalVariables = 6;
inline constexpr int ContinuousVariables = 6;

/// The columns of the table below as the floors have them.
const FloorColumns& BenchColumns();

/// 1,000,000 cases of 6 categorical and 6 continuous variables with 3 % missing data, and a weight; the same in every
/// run.
const quillara::DataTable& BenchTable();

/// An analysis with variables chosen and the steps of a setting taken.
class BenchAnalysis {
  public:
    /// Of the table above, with all variables.
    explicit BenchAnalysis(const BenchCase& setting);
    /// Of a table whose first variables are so many categorical ones, then continuous ones.
    BenchAnalysis(const quillara::DataTable& table, short categorical, short continuous, const BenchCase& setting);

    /// What the next dialogs of two lists of variables are answered with.
    void Answer(std::vector<short> first, std::vector<short> second) {
        First = std::move(first);
        Second = std::move(second);
    }
    [[nodiscard]] CDrillDown& Analysis() { return static_cast<CDrillDown&>(Document.Analysis()); }
    /// A step down on the most frequent category of a variable, and the recount before the next one.
    void Drill(std::int16_t var);
    /// Takes back the step that was taken so many steps ago.
    void DrillUp(std::int16_t stepsAgo);
    /// Lets nothing be known of the cases, neither which ones meet a condition nor how many there are in a category.
    void Forget() { Document.SetSelection({}); }
    /// The graphs that a command makes.
    template <typename Run>
    [[nodiscard]] std::vector<quillara::GraphDocument> GraphsOf(Run run) {
        std::vector<quillara::GraphDocument> graphs;
        Document.Services.TakeDocument = [&](quillara::ResultDocument& made) {
            if (made.Graph() != nullptr) {
                graphs.push_back(*made.Graph());
            }
        };
        run();
        Document.Services.TakeDocument = nullptr;
        return graphs;
    }
    /// Both passes of a step.
    void ReadBoth() {
        Analysis().ReadAfterDrill(0);
        Analysis().ReadBeforeDrill(0);
    }

  private:
    quillara::AnalysisDocument Document;
    std::vector<short> First;
    std::vector<short> Second;
};
