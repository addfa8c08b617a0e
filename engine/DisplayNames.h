#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

class CDrillDown;
class Drill;

namespace drilldown {

/// Bytes of the field that the host writes a short name or a label into: 8 characters and a zero.
inline constexpr std::size_t NameFieldSize = 9;

/// Display name of a variable, made in a work field of NameFieldSize bytes.
[[nodiscard]] std::string DisplayName(CDrillDown& analysis, std::int16_t var, char* field);

/// Gives each category of a record the name of its value; false, and the names stay, without memory for a work field.
[[nodiscard]] bool NameCategories(CDrillDown& analysis, const Drill& record);

}  // namespace drilldown
