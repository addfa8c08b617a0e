#include "workbench/data/RowSet.h"

#include <algorithm>

namespace quillara {

RowSet RowSet::All(std::size_t rows) {
    RowSet all(rows);
    std::ranges::fill(all.Words, ~std::uint64_t{0});
    if (rows % RowsPerWord != 0) {
        all.Words.back() = (std::uint64_t{1} << rows % RowsPerWord) - 1;
    }
    return all;
}

void RowSet::Intersect(const RowSet& other) {
    for (std::size_t i = 0; i < Words.size(); ++i) {
        Words[i] &= other.Words[i];
    }
}

std::size_t RowSet::Count() const {
    std::size_t count = 0;
    for (const std::uint64_t word : Words) {
        count += static_cast<std::size_t>(std::popcount(word));
    }
    return count;
}

bool RowSet::IsEmpty() const {
    return std::ranges::all_of(Words, [](std::uint64_t word) { return word == 0; });
}

}  // namespace quillara
