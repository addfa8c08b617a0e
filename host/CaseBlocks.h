#pragma once

#include <cstdint>
#include <span>

// Optional service of a host: cases in blocks of columns. An analysis that finds no such service reads its cases
// one at a time; the results are the same to the last bit. A pass through blocks leaves the line of case text and the
// weight of the last case, which reading case by case stores, as they are.

/// Result of reading one case.
enum class CaseResult : std::uint8_t {
    Use = 0,  ///< the case belongs to the selection
    Skip = 1,  ///< the case lies outside the selection
    Stop = 2,  ///< the pass ends as cancelled; neither this case nor what is behind it counts
};

/// Consecutive cases of some variables. The host owns the arrays; they stay valid until the next block is read
/// or the table changes. Rows of a block count from 0.
struct CaseBlock {
    std::int32_t Count = 0;  ///< number of cases in the block; 0 ends the pass as cancelled
    const CaseResult* Results = nullptr;  ///< one per case; null: every case is Use
    const double* Weights = nullptr;  ///< one per case, as stored; null: no weight is in force
    std::span<const double*> Columns;  ///< in: room for one address per variable asked for; out: their values, none
                                       ///< of them null
};

/// Implemented by the host, used by the module.
class CaseBlocks {
  public:
    virtual ~CaseBlocks() = default;

    /// Fills `block` with cases first .. first + count - 1 (numbered from 1) of the given variables (numbered
    /// from 1), or fewer of them from the first on; `count` is at least one and at most as many as the table has left.
    /// More cases than asked for aren't counted, and a block without cases or without one of its columns ends the pass
    /// as cancelled. Touches no column that isn't asked for. The host polls for a cancel by the user itself, as often
    /// as lookbr would be called, and marks the first case at which the pass must end with CaseResult::Stop in place of
    /// Use; it and the cases behind it aren't counted. Doesn't fail.
    virtual void ReadBlock(std::int32_t first, std::int32_t count, std::span<const std::int16_t> variables,
                           CaseBlock& block) = 0;
};
