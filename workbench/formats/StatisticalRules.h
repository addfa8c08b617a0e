#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "workbench/formats/NamesInFile.h"
#include "workbench/formats/TextRoom.h"

namespace quillara {

/// What a statistical file that is written can hold in fields of its own; the rest goes to its notes.
struct StatisticalRules {
    std::string_view Extension;
    NameRules Names;
    TextRoom Header;
    TextRoom LongName;
    TextRoom ValueLabel;
    std::size_t TextBytes;  ///< the longest text of a case
    std::size_t NoteBytes;  ///< of a line of the notes
    std::string_view DateFormat;
    std::string_view TimeFormat;
    std::string_view DateTimeFormat;
    std::string_view PreciseDateTimeFormat;  ///< where there are parts of a second
    bool DeclaresMissing;  ///< has codes and ranges of missing values; else marks, .a to .z
    bool LabelsTexts;  ///< has value labels of texts
    bool LabelsAllNumbers;  ///< has value labels of numbers other than whole ones of 32 bits
    bool DeclaresWeight;
    bool KeepsNegativeZero;
};

namespace savRules {

// clang-format off
inline constexpr auto Reserved = std::to_array<std::string_view>({
    "all", "and", "by", "eq", "ge", "gt", "le", "lt", "ne", "not", "or", "to", "with"});
// clang-format on
inline constexpr NameRules Names = {
    .Room = {64, 64}, .FirstSigns = "@", .OtherSigns = "._$#", .Reserved = Reserved, .SegmentBytes = 255};

}  // namespace savRules

namespace dtaRules {

// clang-format off
inline constexpr auto Reserved = std::to_array<std::string_view>({
    "_all", "_b", "_coef", "_cons", "_n", "_N", "_pi", "_pred", "_rc", "_skip", "byte", "double", "float", "if", "in",
    "int", "long", "str#", "strL", "using", "with"});
// clang-format on
inline constexpr NameRules Names = {
    .Room = {128, 32}, .FirstSigns = "_", .OtherSigns = "", .Reserved = Reserved, .LetterCaseCounts = true};

}  // namespace dtaRules

// clang-format off
/// A text of sav could have a byte more, but a field as wide as its longest text loses that byte on reading.
inline constexpr auto RulesOfFormats = std::to_array<StatisticalRules>({
    {"sav",  savRules::Names, {64, 64},  {256, 256}, {120, 120},     32'766,        80,    "DATE11", "TIME8",       "DATETIME20", "DATETIME23.3",             true,  true,  true,  true,  true},
    {"zsav", savRules::Names, {64, 64},  {256, 256}, {120, 120},     32'766,        80,    "DATE11", "TIME8",       "DATETIME20", "DATETIME23.3",             true,  true,  true,  true,  false},
    {"dta",  dtaRules::Names, {255, 80}, {320, 80},  {32'000, 32'000}, 2'000'000'000, 8'000, "%td",    "%tcHH:MM:SS", "%tc",        "%tcDDmonCCYY_HH:MM:SS.sss", false, false, false, false, true},
});
// clang-format on

}  // namespace quillara
