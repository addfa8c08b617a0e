#pragma once

#include <string_view>

/// What the notes of a statistical file tell; see FileNote.
namespace quillara::noteKinds {

// clang-format off
inline constexpr std::string_view Name        = "name";         ///< VARIABLE: its name in the table
inline constexpr std::string_view LongName    = "label";        ///< VARIABLE: its whole label, cut in the file
inline constexpr std::string_view ValueLabel  = "value-label";  ///< VARIABLE VALUE: the whole label, cut in the file or not there
inline constexpr std::string_view Description = "description";  ///< VARIABLE VALUE: the description
inline constexpr std::string_view CaseNames   = "case-names";   ///< VARIABLE: holds the names of the cases; no text
inline constexpr std::string_view Weight      = "weight";       ///< VARIABLE: the declared weight; no text
inline constexpr std::string_view DateTime    = "date-time";    ///< VARIABLE: its dates have times, all midnight; no text
inline constexpr std::string_view Header      = "header";       ///< the whole title text of the file, cut in the file
// clang-format on

}  // namespace quillara::noteKinds
