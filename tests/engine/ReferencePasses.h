#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "engine/Drill.h"
#include "host/CaseBlocks.h"
#include "workbench/data/DataTable.h"
#include "workbench/support/AnalysisDoc.h"

namespace drilltest {

/// What the passes over the cases are defined to do, one case after another and one value after another, over plain
/// copies of the records. The module is compared with it, so it is written for reading and shares nothing with the
/// passes of the module; only the intervals are built by the records themselves. Names of values stay empty.
class ReferencePasses {
  public:
    using Records = std::vector<Drill>;

    explicit ReferencePasses(const quillara::DataTable& table) : Table(table) {}

    void ChooseDrills(const quillara::VariableLists& lists);
    void ChooseReviews(const quillara::VariableLists& lists);
    int ReadAfterDrill();
    int ReadBeforeDrill();
    int FillNeatIntervals();
    int FillContinuousIntervals();
    /// Moves the first record of a variable to the head of DrillUps, kept by a row of its list.
    void MoveDown(std::int16_t var, int row);
    void MoveUp(std::int16_t var);
    Drill* First(Records& set, std::int16_t var) const;

    // Settings

    std::vector<CaseResult> Selection;  ///< empty: every case
    std::optional<std::size_t> Weight;
    quillara::VariableLists Drills;  ///< categorical, continuous
    quillara::VariableLists Reviewed;
    std::int16_t WeightedMoments = 0;
    std::int16_t CasewiseDeletionOfMD = 0;
    std::int16_t RVCasewiseDeletionOfMD = 0;
    std::int16_t DataChanged = 0;
    int CancelPoll = 0;  ///< poll at which the user cancels
    int Polls = 0;

    // State

    std::int32_t ValidVar = 0;
    Records DrillDowns;
    Records DrillUps;
    Records Reviews;

  private:
    /// What a pass finds out about one variable.
    struct Statistics {
        void AddMissing(double weight);
        void Add(double x, double weight);
        void Store(Drill& record) const;

        double Mean = 0.0;
        double SumSquares = 0.0;
        double Min = 1.7e+308;
        double Max = -1.7e+308;
        double SumWeights = 0.0;
        double MissingWeight = 0.0;
        std::int32_t ValidCount = 0;
        std::int32_t MissingCount = 0;
    };

    template <typename Visit>
    bool ForEachCase(Visit visit);
    [[nodiscard]] double WeightOf(std::size_t row) const;
    [[nodiscard]] double Value(std::int16_t var, std::size_t row) const;
    [[nodiscard]] bool IsMissing(std::int16_t var, double value) const;
    [[nodiscard]] bool AnyMissing(const quillara::VariableLists& lists, std::size_t row) const;
    [[nodiscard]] bool HasBeenDrilled(std::size_t row) const;
    [[nodiscard]] bool DeletedForDrills(std::size_t row) const;
    [[nodiscard]] bool DeletedForReviews(std::size_t row) const;

    void MakeRecords(Records& set, const quillara::VariableLists& lists) const;
    int Scan(Records& set, const quillara::VariableLists& lists, bool reviews);
    void StoreAfterDrill(Records& set, const std::vector<Statistics>& found, int (Drill::*build)());
    template <typename Deletes>
    int FillIntervals(const std::vector<std::int16_t>& variables, Deletes deletes);
    void AddValues(Records& set, std::vector<Statistics>& found, std::size_t row, double weight);

    const quillara::DataTable& Table;
};

}  // namespace drilltest
