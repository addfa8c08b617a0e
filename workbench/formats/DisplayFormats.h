#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "workbench/data/DataTable.h"
#include "workbench/formats/ForeignTime.h"

namespace quillara {

/// How a column of numbers is shown in a statistical file, and what that makes of its values.
struct DisplayFormat {
    std::string Text;  ///< empty: the ordinary one
    std::optional<ForeignTime> Time;  ///< the conversion of a date or time of day
};

/// The display format for a variable that isn't text in a file of extension sav, zsav or dta: its own where that file
/// knows it and the values come back under it, a number's width and decimals in the file's own words, else `ordinary`
/// for a date or time and nothing for a number. Time is set for dates and times only, also where it can't hold each
/// value.
[[nodiscard]] DisplayFormat FormatInFile(const Variable& variable, std::string_view extension,
                                         std::string_view ordinary);

}  // namespace quillara
