#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/formats/TextRoom.h"

namespace quillara {

/// What names of variables a statistical file admits. Letters and what begins a name may stand everywhere, digits and
/// OtherSigns not at the beginning. Characters beyond ASCII count as letters, but for blanks, punctuation and symbols.
struct NameRules {
    TextRoom Room;
    std::string_view FirstSigns;  ///< may begin a name, beside letters
    std::string_view OtherSigns;
    std::span<const std::string_view> Reserved;  ///< in small letters; # at the end: with any digits behind
    bool LetterCaseCounts = false;  ///< in comparing names with each other and with reserved words
    std::size_t SegmentBytes = 0;  ///< a longer text is split into variables with names of their own; 0: never
};

/// A variable that wants a name.
struct NamedColumn {
    std::string Name;
    std::size_t TextBytes = 0;  ///< of its longest text; 0: it holds no texts
};

/// The names of variables in a file, all valid and unique. A valid one stays; any other, and a repeated one, gets the
/// nearest valid name that is free: signs that aren't admitted become _, a V goes before a wrong beginning, _2, _3, ...
/// behind what is taken.
/// Surprise: a long text of a sav file is kept in segments with names of the library's own (ITEM1 goes on in ITEM10 and
/// ITEM11); its variable gets T1_, T2_, ... before its name when a segment would take the name of a variable.
[[nodiscard]] std::vector<std::string> NamesInFile(const std::vector<NamedColumn>& columns, const NameRules& rules);

/// The first of Case, Case_2, Case_3, ... that isn't one of these names.
[[nodiscard]] std::string FreeNameForCases(const std::vector<std::string>& names);

}  // namespace quillara
