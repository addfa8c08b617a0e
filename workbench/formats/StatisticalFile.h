#pragma once

#include <string>
#include <string_view>

#include "workbench/data/DataTable.h"
#include "workbench/formats/ReadOptions.h"

namespace quillara {

/// Whether files of this extension (in small letters) are read by ReadStatisticalFile.
[[nodiscard]] bool IsStatisticalFile(std::string_view extension);

/// Reads a sav, zsav, por, dta, sas7bdat or xpt file: names, labels, value labels, formats, the declared weight, and
/// what WriteDataFile had no room for and noted in the file (see NotedFacts.h). What the file marks as missing (system
/// missing, tagged missing, each user-missing value or range, a blank text), and what is no finite number, becomes the
/// missing code; which of the file's own missing values a case has stands in Variable::Reasons, with their labels.
/// Dates become ValueKind::Date, times TimeOfDay, as ForeignTime.h says. The texts of a text variable are numbered in
/// byte order; a value label of a text becomes the label of its number. options.Encoding, unless empty, overrides the
/// file's own; of the others Progress, Noticed and Cancelled count.
/// Throws DataError, naming the file, when it can't be read, is damaged or has fewer cases than it declares;
/// UsageError when the encoding isn't known; Interrupted when options.Cancelled says so.
[[nodiscard]] DataTable ReadStatisticalFile(const std::string& path, std::string_view extension,
                                            const ReadOptions& options);

}  // namespace quillara
