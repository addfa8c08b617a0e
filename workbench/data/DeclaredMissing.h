#pragma once

#include <string>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// Values of a variable that its user declares as missing data.
struct DeclaredMissing {
    std::string Variable;
    /// 99, a date, a text as it stands, a label, or a range with both ends included: 97..99, 900.. or ..0.
    std::vector<std::string> Codes{};
};

/// Makes these values missing data that keep their names, as if the file had declared them (MissingReasons.h), and
/// their labels those of the missing values. Gives how many cases have them. Throws DataError for a variable that isn't
/// there and for a code that is no value of its kind.
std::size_t DeclareMissing(DataTable& table, const DeclaredMissing& declared);

}  // namespace quillara
