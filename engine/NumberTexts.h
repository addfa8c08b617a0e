#pragma once

#include <string>
#include <string_view>

#include "host/TextFunctions.h"

namespace drilldown {

/// Writes a value into a number field of 8 characters and a zero (9 bytes), "--" when it can't be printed. With flag
/// 0x40 a magnitude in [0.001, 1) has 7 decimals in place of 8. Returns the length of the text.
int RealToFieldText(double value, unsigned char flags, char* buffer);

/// Text of a value in the name of a category, by RealToFieldText, without trailing blanks and points.
[[nodiscard]] std::string FieldBoundText(double value);

/// The same by the host's RealToText with 8 decimals.
[[nodiscard]] std::string RealBoundText(double value);

/// A text without blanks at both ends.
[[nodiscard]] std::string TrimBlanks(std::string_view text);

}  // namespace drilldown
