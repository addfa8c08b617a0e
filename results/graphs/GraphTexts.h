#pragma once

#include <cstdint>
#include <string>

#include "resources/StringTable.h"

class CDrillDown;

/// "NAME: LONG NAME" of a variable, or its short name alone when it has no long one. The short name stands as the
/// host's raw field.
[[nodiscard]] std::string VariableLabel(CDrillDown& analysis, std::int16_t var);

/// A title of the string table for a variable, as its key: the variable's label stands in place of the mark %s, or
/// behind a text without one.
[[nodiscard]] std::string VariableTitle(CDrillDown& analysis, int textId, std::int16_t var);

/// The caption of an axis of counts: it tells whether a weight is in force.
[[nodiscard]] const char* CountsCaption(CDrillDown& analysis);
