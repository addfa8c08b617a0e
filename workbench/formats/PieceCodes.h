#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "workbench/data/Column.h"
#include "workbench/formats/ColumnPiece.h"

namespace quillara {

/// Calls `take` with the entries of each piece and its worker, and frees the pieces one by one.
template <typename Take>
void TakePieces(std::vector<ColumnPiece>& pieces, Take take) {
    for (ColumnPiece& piece : pieces) {
        std::visit([&](const auto& entries) { take(entries, piece.Worker); }, piece.Entries);
        piece = {};
    }
}

inline std::size_t CasesOf(const std::vector<ColumnPiece>& pieces) {
    std::size_t cases = 0;
    for (const ColumnPiece& piece : pieces) {
        cases += piece.Size();
    }
    return cases;
}

/// Appends the codes of a piece, each put in place of another by a table. Entries of other forms are no codes.
template <typename Entries, typename Code>
void AppendCodes(const Entries& entries, std::span<const std::uint32_t> table, std::vector<Code>& codes) {
    if constexpr (std::is_unsigned_v<typename Entries::value_type>) {
        const std::size_t before = codes.size();
        codes.resize(before + entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i) {
            codes[before + i] = static_cast<Code>(table[entries[i]]);
        }
    }
}

/// The codes of all pieces: append(entries, worker, codes) puts those of one behind the others.
template <typename Code, typename Append>
std::vector<Code> CodesOf(std::vector<ColumnPiece>& pieces, Append append) {
    std::vector<Code> codes;
    codes.reserve(CasesOf(pieces));
    TakePieces(pieces, [&](const auto& entries, std::size_t worker) { append(entries, worker, codes); });
    return codes;
}

/// A column of codes as narrow as their number allows.
template <typename Append>
Column ColumnOfCodes(std::vector<ColumnPiece>& pieces, Append append, std::vector<double> values) {
    if (values.size() <= 1U + std::numeric_limits<std::uint8_t>::max()) {
        return Column::OfCodes(CodesOf<std::uint8_t>(pieces, append), std::move(values));
    }
    return Column::OfCodes(CodesOf<std::uint16_t>(pieces, append), std::move(values));
}

}  // namespace quillara
