#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/TableColumns.h"
#include "workbench/data/DataTable.h"

namespace quillara {

// The column file: see docs/formats.md. All numbers are little-endian.

inline constexpr std::string_view ColumnFileMark("\x93QTABLE\n", 8);
inline constexpr std::uint32_t ColumnFileVersion = 1;

/// The first bytes of a column file.
struct ColumnFileHeader {
    std::array<char, 8> Mark{};
    std::uint32_t Version = ColumnFileVersion;
    std::uint32_t Reserved = 0;
    std::uint64_t FileBytes = 0;
    std::uint64_t DictionaryBytes = 0;  ///< of the dictionary, which follows the header
    std::uint64_t DictionaryChecksum = 0;
    std::array<std::uint64_t, 2> Unused{};
    std::uint64_t Checksum = 0;  ///< of the bytes before it
};
static_assert(sizeof(ColumnFileHeader) == 64);

/// A stretch of a column file behind the dictionary; it begins at a multiple of SectionAlignment.
struct FileSection {
    std::uint64_t Offset = 0;  ///< from the end of the dictionary, filled up to such a multiple
    std::uint64_t Bytes = 0;
    std::uint64_t Checksum = 0;
};
inline constexpr std::uint64_t SectionAlignment = 64;

/// A number filled up to a multiple of SectionAlignment.
[[nodiscard]] constexpr std::uint64_t Aligned(std::uint64_t bytes) {
    return (bytes + SectionAlignment - 1) / SectionAlignment * SectionAlignment;
}

/// Texts, one behind the other: the offset of each from the end of the offsets, and one more, 64 bits each; the bytes.
struct TextSection {
    std::uint64_t Count = 0;
    FileSection Where;
};

/// Where a column stands.
struct StoredColumn {
    ColumnForm Form = ColumnForm::Doubles;
    FileSection Entries;
    std::uint64_t ValueCount = 0;  ///< of codes
    FileSection Values;  ///< of codes: their values as doubles
};

/// What the dictionary says of a variable and where its column stands.
struct StoredVariable {
    Variable Words;  ///< without values, texts and the places of reasons
    StoredColumn Values;
    std::optional<StoredColumn> Places;  ///< of the reasons of missing data; nothing: no case has one
    TextSection Texts;
};

/// The dictionary of a column file.
struct StoredTable {
    DataTable Words;  ///< without variables and case names
    TextSection CaseNames;
    std::vector<StoredVariable> Variables;
};

/// How many bytes an entry of a column has.
[[nodiscard]] std::uint64_t BytesOfEntry(ColumnForm form);

/// The dictionary as JSON. Throws DataError when a name or label is no UTF-8.
[[nodiscard]] std::string DictionaryText(const StoredTable& table);

/// The dictionary that a text says; nothing of it is compared with the file. Throws DataError, saying what is amiss.
[[nodiscard]] StoredTable TableOfDictionary(std::string_view text);

}  // namespace quillara
