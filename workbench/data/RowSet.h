#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "workbench/data/Column.h"

namespace quillara {

/// Some of the rows of a table, which are numbered from 0: a bit for each.
class RowSet {
  public:
    static constexpr std::size_t RowsPerWord = 64;

    RowSet() = default;
    /// None of so many rows.
    explicit RowSet(std::size_t rows) : Words((rows + RowsPerWord - 1) / RowsPerWord), Rows(rows) {}
    [[nodiscard]] static RowSet All(std::size_t rows);

    void Insert(std::size_t row) { Words[row / RowsPerWord] |= std::uint64_t{1} << row % RowsPerWord; }
    /// Leaves the rows that are in the other set too, which is of the same table.
    void Intersect(const RowSet& other);

    /// How many rows are in the set.
    [[nodiscard]] std::size_t Count() const;
    [[nodiscard]] bool IsEmpty() const;
    /// How many rows the table has.
    [[nodiscard]] std::size_t TableRows() const { return Rows; }
    /// Row n is bit n % 64 of word n / 64; bits behind the last row are 0.
    [[nodiscard]] std::span<const std::uint64_t> Bits() const { return Words; }
    [[nodiscard]] std::span<std::uint64_t> Bits() { return Words; }

    /// Calls `visit(row)` for the rows of the set, ascending.
    template <typename Visit>
    void ForEach(Visit visit) const {
        for (std::size_t word = 0; word < Words.size(); ++word) {
            for (std::uint64_t bits = Words[word]; bits != 0; bits &= bits - 1) {
                visit(word * RowsPerWord + static_cast<std::size_t>(std::countr_zero(bits)));
            }
        }
    }
    /// Calls `visit(value)` for their values in a column, in the order of the rows.
    template <typename Visit>
    void ForEachValue(const Column& column, Visit visit) const {
        constexpr int manyOfAWord = 16;
        double room[RowsPerWord];
        for (std::size_t word = 0; word < Words.size(); ++word) {
            std::uint64_t bits = Words[word];
            const std::size_t first = word * RowsPerWord;
            if (std::popcount(bits) >= manyOfAWord) {
                const std::size_t length = Rows - first < RowsPerWord ? Rows - first : RowsPerWord;
                const double* values = column.Run(first, std::span(room, length)).data();
                for (; bits != 0; bits &= bits - 1) {
                    visit(values[std::countr_zero(bits)]);
                }
            }
            for (; bits != 0; bits &= bits - 1) {
                visit(column[first + static_cast<std::size_t>(std::countr_zero(bits))]);
            }
        }
    }

  private:
    std::vector<std::uint64_t> Words;
    std::size_t Rows = 0;
};

}  // namespace quillara
