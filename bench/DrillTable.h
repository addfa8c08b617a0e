#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "bench/FloorColumns.h"
#include "engine/DrillDown.h"
#include "workbench/data/DataTable.h"
#include "workbench/hosting/AnalysisDocument.h"

/// What one benchmark runs on.
struct BenchCase {
    int Steps = 0;  ///< drill steps in force, on the first categorical variables
    bool Weighted = false;  ///< a fractional weight is in force
    bool Blocks = true;  ///< the host offers columns
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

/// An analysis of that table with all variables chosen and the steps of `setting` taken.
class BenchAnalysis {
  public:
    explicit BenchAnalysis(const BenchCase& setting);

    /// What the next dialogs of two lists of variables are answered with.
    void Answer(std::vector<short> first, std::vector<short> second) {
        First = std::move(first);
        Second = std::move(second);
    }
    [[nodiscard]] CDrillDown& Analysis() { return static_cast<CDrillDown&>(Document.Analysis()); }

  private:
    void Drill(std::int16_t var);

    quillara::AnalysisDocument Document;
    std::vector<short> First;
    std::vector<short> Second;
};
