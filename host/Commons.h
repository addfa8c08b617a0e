#pragma once

#include <cstddef>
#include <cstdint>

// The structures that the host and an analysis share. An analysis owns its four and gives their addresses to
// CAnalysisSupport::InitCommons; from then on the host keeps the fields that it writes up to date.

inline constexpr std::size_t HeaderTextWidth = 80;
inline constexpr std::size_t CornerLabelWidth = 64;
inline constexpr std::size_t CaseLineWidth = 220;

/// The input table.
struct OrvTag {
    std::int16_t Variables = 0;  ///< number of variables; written by the host
    std::int32_t Cases = 0;  ///< number of cases; written by the host
    char HeaderText[HeaderTextWidth] = {};  ///< header text of the table; written by the host
    char CornerLabel[CornerLabelWidth] = {};  ///< text above the row names of the next spreadsheet; read by the host
};

/// The input table's case names, and the analysis's mark.
struct Orv88Tag {
    std::int16_t CaseNameWidth = 0;  ///< bytes of the case-name field, 0: the table has no case names
    char AnalysisTag[8] = {};  ///< mark of the analysis; written by the module, read by the host
};

/// The weights in force, and that of the case that was read last.
struct Wght_com {
    std::int16_t Active = 0;  ///< 0: no weight is in force; written by the host
    std::int16_t Variable = 0;  ///< number of the weight variable, 0: none is defined; written by the host
    std::int16_t Weighted = 0;  ///< the case came with a weight
    std::int16_t CaseTag = 0;  ///< the host's tag of the case
    float SingleWeight = 0.0F;  ///< its weight in single precision
    double Weight = 0.0;  ///< its weight
};

/// The text line of the case that was read last.
struct b1_com {
    char Line[CaseLineWidth] = {};  ///< the case name stands in it, from the column position on
    std::int16_t Column = 1;  ///< column position, from 1
};

/// A menu of the host; analyses without one pass null.
struct _AddMenu;
