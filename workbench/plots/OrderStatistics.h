#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace quillara {

/// The values at some places of an ascending order, without sorting: the values are counted by their leading bits, and
/// only those that share them with the value that is looked for are put into order.
class OrderStatistics {
  public:
    /// Finite values, which must outlive it.
    explicit OrderStatistics(std::span<const double> values);

    /// The value at a place from 0, and the one behind it; behind the last, the last again.
    [[nodiscard]] std::pair<double, double> At(std::size_t place) const;

  private:
    [[nodiscard]] std::vector<double> GroupAt(std::size_t place) const;

    std::span<const double> Values;
    std::vector<std::uint32_t> Ends;  // by leading bits: how many values have these or come before
};

}  // namespace quillara
