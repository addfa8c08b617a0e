#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "engine/DrillDown.h"
#include "host/CaseBlocks.h"
#include "tests/engine/ListPair.h"
#include "workbench/data/DataTable.h"

namespace drilltest {

/// What the passes over the cases are defined to do, one case after another and one value after another, over plain
/// copies of the records. The module is compared with it, so it is written for reading and shares nothing with the
/// passes of the module; only the intervals are built by the records themselves. Values are not named.
struct ReferencePasses {
    using Records = std::vector<Drill>;

    /// One of the two selections.
    struct Side {
        VariableLists Lists;  ///< categorical, continuous
        std::int16_t Casewise = 0;
        Records Open;
    };

    explicit ReferencePasses(const quillara::DataTable& table) : Table(table) {}
    /// Takes over the records and the settings that a module has before a pass.
    void Adopt(const CDrillDown& module);

    // The passes, each with the result of its twin in the module.

    int Choose(const VariableLists& lists);
    int Review(const VariableLists& lists);
    int ReadAfterDrill();
    int ReadBeforeDrill();
    /// FillContinuousIntervals, and of all cases FillNeatIntervals. Values go into the intervals of the first record of
    /// their variable, which may be drilled on already.
    int FillIntervals(bool remaining);

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
