#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillara {

/// One way of writing numbers that aren't plain ones: "1,234.5", "1.234,5", "1 234,5", "1'234.5", "10%", "$5", "(5)".
struct NumberNotation {
    char Point = '.';  ///< before decimals
    char Thousands = '\0';  ///< between thousands: the other one of point and comma, a blank or an apostrophe; 0: none
    bool IsPercent = false;
    std::string_view Currency{};  ///< its sign; empty: none

    friend bool operator==(const NumberNotation&, const NumberNotation&) = default;
};

/// What texts say of the way in which they are numbers.
enum class NotationFinding {
    None,  ///< some are no numbers in any way, or all are plain ones with decimal points
    Certain,  ///< all are numbers in one way, and in no other one
    Unsure,  ///< all are, in either way: the comma of "1,234" stands between thousands or before decimals
    Mixed,  ///< each is a number in some way, but not all in the same
};

struct FoundNotation {
    NotationFinding Finding = NotationFinding::None;
    NumberNotation Notation{};  ///< of Unsure the one with thousands; of None and Mixed nothing
};

/// The way in which all of some texts are numbers. Groups of thousands must be complete, and where point or comma stand
/// between them in all texts: "1234" or "0,123" beside "1,234" has none. A percent sign or the sign of one currency
/// stands at all texts, or at none. Blanks of all widths count alike, so do straight and curly apostrophes; a minus may
/// stand behind, or brackets in its place. With a comma as `decimal` only such numbers count.
[[nodiscard]] FoundNotation FindNotation(const std::vector<std::string>& texts, char decimal);

/// Whether a text is a number by points alone that may stand between thousands: "1.234", "1.234.567". One without a
/// point, "850", says nothing.
enum class PointUse { None, MayGroup, Decimal };
[[nodiscard]] PointUse PointUseOf(std::string_view text);

/// The number that a text is in a notation, the nearest double; "10%" is 0.1. Nothing for another text, and for a
/// number too large for a double.
[[nodiscard]] std::optional<double> ReadInNotation(std::string_view text, const NumberNotation& notation);

}  // namespace quillara
