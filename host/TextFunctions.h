#pragma once

// Free functions of the host that turn numbers into short texts and scale axes. They neither fail nor throw.

/// Flags of RealToText that analyses use. All give the same text.
inline constexpr unsigned char CategoryBoundText = 0x84;
inline constexpr unsigned char NumberFieldText = 0x40;

/// Writes `value` as a decimal number of at most `width` characters and a terminating zero into `text`, which has
/// room for `size` bytes. Returns the length of the text.
short RealToText(double value, unsigned char flags, short width, short decimals, char* text, short size);

/// Writes a whole number of at most `width` characters and a terminating zero; a longer one is written as
/// RealToText would. Returns the length of the text.
short IntToText(long value, unsigned char flags, short width, char* text);

/// Non-zero when the value can be printed: it is finite.
int ValueIsValid(const double* value);

/// Replaces a data range and a raw step by round ones: the new low is at or below the old, the new high at or
/// above it, and low + k * step, built by repeated addition, reaches high for a whole k near `parts`.
/// `parts` below 1 counts as 10; `cases` plays no part.
void scling_double_QUA(double* low, double* high, double* step, short cases, short parts);
