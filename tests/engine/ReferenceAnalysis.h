#pragma once

#include "host/CaseBlocks.h"
#include "tests/engine/DrillBench.h"

namespace drilltest {

/// What the passes over the cases and the moves of records are defined to do, one case after another and one value
/// after another, over plain lists of records. The module is compared with it, so it is written for reading and shares
/// nothing with the passes of the module; only the intervals are built by the records themselves. Values are not named.
struct ReferenceAnalysis {
    using Records = std::vector<Drill>;

    /// One of the two selections.
    struct Side {
        VariableLists Lists;  ///< categorical, continuous
        std::int16_t Casewise = 0;
        Records Open;
    };

    explicit ReferenceAnalysis(const quillara::DataTable& table) : Table(table) {}
    /// Takes over the records and the settings that a module has before an operation.
    void Adopt(const CDrillDown& module);

    // The operations, each with the result of its twin in the module.

    int ChooseLists(const VariableLists& lists);
    int ReviewLists(const VariableLists& lists);
    int ReadAfterDrill();
    int ReadBeforeDrill();
    /// FillContinuousIntervals, and of all cases FillNeatIntervals. Values go into the intervals of the first record of
    /// their variable, which may be drilled on already.
    int FillIntervals(bool remaining);
    /// Takes a step on a row of a variable's list, or undoes the step on a variable; no case is read.
    int MoveDown(std::int16_t var, std::int32_t row);
    int MoveUp(std::int16_t var);
    /// Puts the open records or the steps at new places; those without one, -1, follow in their order.
    int ReorderOpen(const std::vector<std::int32_t>& places) { return Reorder(Drills.Open, places); }
    int ReorderSteps(const std::vector<std::int32_t>& places) { return Reorder(Steps, places); }
    static int Reorder(Records& records, const std::vector<std::int32_t>& places);

    std::size_t Variables() const { return Table.Variables.size(); }
    const Records& OpenRecords() const { return Drills.Open; }
    const Records& StepRecords() const { return Steps; }

    // What the host holds.

    const quillara::DataTable& Table;
    std::vector<CaseResult> Selection;  ///< empty: every case
    std::optional<std::size_t> Weight;
    int CancelPoll = 0;  ///< poll at which the user cancels
    int Polls = 0;

    // What the module holds.

    std::int32_t ValidVar = 0;
    std::int16_t DataChanged = 0;
    std::int16_t WeightedMoments = 0;
    Side Drills;
    Side Reviews;
    Records Steps;
};

}  // namespace drilltest
