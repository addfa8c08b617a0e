#pragma once

#include <vector>

#include "host/CaseBlocks.h"
#include "workbench/data/Column.h"

class CAnalysisDoc;

namespace quillara {

class Surroundings;
class TableInUse;

/// The columns of a document's table as blocks of cases, without copying them.
class TableCaseBlocks : public CaseBlocks {
  public:
    TableCaseBlocks(const TableInUse& data, const Surroundings& around);

    /// A variable that isn't there has a column of zeros.
    void ReadBlock(std::int32_t first, std::int32_t count, std::span<const std::int16_t> variables,
                   CaseBlock& block) override;

    bool IsOffered = true;  ///< to the analysis

  private:
    /// The values of a column in a block; where they don't stand as doubles, in the room of that number.
    const double* RunOf(const Column& column, std::size_t first, std::size_t count, std::size_t room);
    const double* ZerosFor(std::size_t count);
    const CaseResult* ResultsWithStop(std::int32_t first, std::int32_t count, std::int32_t stop);

    const TableInUse& Data;
    const Surroundings& Around;
    std::vector<CaseResult> Results;
    std::vector<std::vector<double>> Rooms;  // of the weights, then of the columns
    std::vector<double> Zeros;
};

/// Polls as reading cases first .. first + count - 1 (numbered from 1) one by one would: once for each case to use,
/// until the answer is yes. Gives the number of cases before that one.
[[nodiscard]] std::int32_t CasesBeforeBreak(const TableInUse& data, const Surroundings& around, std::int32_t first,
                                            std::int32_t count);

/// Those of a document; without a document no cases.
[[nodiscard]] TableCaseBlocks& CaseBlocksOf(CAnalysisDoc* document);

}  // namespace quillara
