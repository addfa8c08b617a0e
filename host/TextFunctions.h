#pragma once

// Free functions of the host that turn numbers into short texts and back, and scale axes. None throws.

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

/// Replaces a data range and a raw step by round ones for intervals (a, b]: the new low is below the old one, the new
/// high at or above it, and repeated addition of step to low reaches high after a number of steps near `parts`.
/// `parts` below 1 counts as 10; `cases` plays no part.
/// When the largest value lies a few units in the last place above a round bound, it counts as lying on it, and the
/// step is raised until the last bound reaches it. A low equal to high gives one interval around the value.
/// A range that isn't finite, or is reversed, stays unchanged, and so does the step. Where no round bounds enclose the
/// range, at the ends of the doubles, it gets equal parts from the number below its low on, or, at the lowest double,
/// from the low itself; their step always moves a bound.
void scling_double_QUA(double* low, double* high, double* step, short cases, short parts);

// Functions that take texts apart.

/// The character that separates the items of a list.
char GetListSep();

/// Length of the leading run of `text` without a character of `set`.
int wstrcspn(const char* text, const char* set);

/// Reads a decimal number that fills the first `length` bytes of a text. 0, and the number; not 0, and nothing written,
/// when they are none or it isn't finite. Analyses give the mode 5. A host may take a comma for the decimal point where
/// it can't be anything else.
int GetDouble(int mode, const char* text, int length, double* value);
