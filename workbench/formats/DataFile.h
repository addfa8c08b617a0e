#pragma once

#include <functional>
#include <string>

#include "workbench/data/DataTable.h"
#include "workbench/formats/ReadOptions.h"

namespace quillara {

/// Reads a data file. Its extension, in any case of letters, says how: sav, zsav, por, dta, sas7bdat and xpt as
/// statistical files, csv, tsv, tab and txt as delimited text. With any other the first bytes say whether it is a
/// statistical file; else it is delimited text.
/// Throws DataError when the file can't be opened, is damaged or cut short, or is plainly not what its name says;
/// UsageError when options.Encoding isn't known or options.Separator can't separate; Interrupted when
/// options.Cancelled says so.
[[nodiscard]] DataTable ReadDataFile(const std::string& path, const ReadOptions& options = {});

/// Writes a table to a csv file: names first, labels and texts in place of coded values (see TextOfTable), missing
/// data as empty fields. A file that stands there already is replaced as a whole or, after a failure, left as it was.
/// `cancelled` is asked now and then, the last time right before the file is replaced.
/// Throws DataError when the extension is another one or the file can't be written, Interrupted when cancelled.
void WriteDataFile(const DataTable& table, const std::string& path, const std::function<bool()>& cancelled = {});

}  // namespace quillara
