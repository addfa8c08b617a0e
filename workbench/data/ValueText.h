#pragma once

#include <string>

#include "workbench/data/DataTable.h"

namespace quillara {

/// A value for people: a date as YYYY-MM-DD, with HH:MM behind it where `step` is less than a day and HH:MM:SS where it
/// is less than a minute; a time as HH:MM:SS, without seconds where `step` is whole minutes; a date-time as YYYY-MM-DD
/// HH:MM:SS and up to thousandths of a second, without what is zero in it and in a whole `step`; a number with the
/// decimals that `step` needs, whole ones up to 15 digits plain. `step` is the distance to the neighbours that it is to
/// be told from; 0: there are none, and a number has up to 6 significant digits or all of its whole ones. What the
/// calendar doesn't have is shown by its number; what isn't finite is empty. Of texts this is the number of the text.
[[nodiscard]] std::string TextOfValue(ValueKind kind, double value, double step = 0.0);

}  // namespace quillara
