#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/HostBuffer.h"
#include "engine/TallyRows.h"

namespace drilldown {

/// Cases counted by the codes of a column, in tables of plain numbers: cases by their number, or by weights whose sums
/// are exact in any order. Each thread counts in tables of its own, and where codes are few in four by turns, since
/// neighbours that fall together would wait for each other.
class CodeCounts {
  public:
    /// For codes below `codes`, by `threads` threads at once; `weighted`: cases come with weights.
    CodeCounts(CAnalysisSupport& host, std::size_t codes, std::size_t threads, bool weighted);

    /// False when there was no memory.
    explicit operator bool() const noexcept { return Cases && Weights; }
    void Add(const TableColumn& column, const WeightedRows& rows, std::size_t thread) const;
    /// Sum over all threads.
    [[nodiscard]] double Of(std::size_t code) const;

  private:
    [[nodiscard]] std::size_t TableOf(std::size_t thread) const noexcept { return Apart + thread * Stride; }

    /// Entries between the tables of different threads, so that these share no line of a cache.
    static constexpr std::size_t Apart = 16;

    std::size_t Threads;
    bool Weighted;
    std::size_t Replicas;
    std::size_t Stride;
    HostBuffer<std::uint32_t> Cases;
    HostBuffer<double> Weights;
};

}  // namespace drilldown
