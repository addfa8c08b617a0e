#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include "engine/Drill.h"

class CDrillDown;

/// Short name of a variable as the host's field has it: blanks stay, and a long name is its key.
[[nodiscard]] std::string NameField(CDrillDown& analysis, std::int16_t var);

/// Short name of a variable without blanks at both ends, its key expanded; formatting marks stay, unlike in
/// CDrillDown::VariableDisplayName.
[[nodiscard]] std::string ExpandedName(CDrillDown& analysis, std::int16_t var);
/// The same, made in a work field of NameFieldSize bytes.
[[nodiscard]] std::string ExpandedName(CDrillDown& analysis, std::int16_t var, char* field);

/// A title of the string table for a variable, as its key: short name (the raw field), separator and long name, or the
/// short name alone, stand in place of the mark %s, or behind a text without one.
[[nodiscard]] std::string VariableTitle(CDrillDown& analysis, int textId, std::int16_t var,
                                        const char* separator = ": ");

/// The name of a category; its bounds where it has none.
[[nodiscard]] std::string CategoryName(const Drill& record, const Categories& category);

/// A value as %f prints it, with a point whatever the locale of the host.
[[nodiscard]] std::string SixDecimals(double value);
/// The same without zeros at its end, and without a point there.
[[nodiscard]] std::string ShortDecimals(double value);

/// A text whose marks (% and a letter) are replaced by the values in turn.
[[nodiscard]] std::string FillFormat(const std::string& format, std::initializer_list<std::string> values);

/// Whether a category of a variable has a long label; its key then stands in `buffer` (NameFieldSize bytes).
[[nodiscard]] bool FindLongLabel(CDrillDown& analysis, const Drill& record, const Categories& category, char* buffer);
