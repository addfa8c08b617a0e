#pragma once

#include <vector>

#include "host/CaseBlocks.h"

namespace quillara {

struct AnalysisState;

/// The columns of a document's table as blocks of cases, without copying them.
class TableCaseBlocks : public CaseBlocks {
  public:
    explicit TableCaseBlocks(const AnalysisState& state);

    /// A variable that isn't there has a column of zeros.
    void ReadBlock(std::int32_t first, std::int32_t count, std::span<const std::int16_t> variables,
                   CaseBlock& block) override;

  private:
    const double* ColumnFrom(std::int32_t first, std::int32_t count, std::int16_t variable);
    std::int32_t CasesBeforeBreak(std::int32_t first, std::int32_t count) const;
    const CaseResult* ResultsWithStop(std::int32_t first, std::int32_t count, std::int32_t stop);

    const AnalysisState& State;
    std::vector<CaseResult> Results;
    std::vector<double> Zeros;
};

}  // namespace quillara
