#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

class CDrillDown;

/// Bytes of the field that the host writes a short name or a label into: 8 characters and a zero.
inline constexpr std::size_t NameFieldSize = 9;

/// Display name of a variable, made in a work field of NameFieldSize bytes.
[[nodiscard]] std::string DisplayName(CDrillDown& analysis, std::int16_t var, char* field);
