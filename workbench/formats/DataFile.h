#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/formats/ReadOptions.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// Reads a data file, or of a database what a name as DatabaseSourceOf has it says. Its extension, in any case of
/// letters, says how (see FileFormats). With any other the first bytes say whether it is a statistical file; else it is
/// delimited text. Throws DataError when the file can't be opened, is damaged or cut short, or is plainly not what its
/// name says; UsageError when options.Encoding isn't known or options.Separator can't separate; Interrupted when
/// options.Cancelled says so.
[[nodiscard]] DataTable ReadDataFile(const std::string& path, const ReadOptions& options = {});

/// Throws DataError, which lists what can be written, unless the extension of a path, in any case of letters, is
/// that of a format that is written, or it is the standard output, to which csv goes.
void CheckCanBeWritten(const std::string& path);

/// Writes a table to a data file in the format that its extension says (see CheckCanBeWritten).
///
/// sav, zsav and dta keep names, long names, kinds, values, value labels and descriptions, missing data (as system
/// missing or blank text), names of the cases, the declared weight and the title text, so that ReadDataFile gives them
/// back. What has no field there or is too long for it is kept in the notes of the file (see NoteKinds.h and
/// FileNotes.h): original names (NamesInFile tells which are changed), which variable holds the case names, whole
/// labels, descriptions; in dta also the weight and labels of numbers that aren't whole. A text variable with labels of
/// its own is written to dta as numbers with labels: its texts aren't kept, what they were shown as is. zsav takes a
/// negative zero for 0. sav and zsav keep the missing values of a file as it declared them, dta keeps .a to .z, and
/// where they have no room for them a line per variable is among the results. qtable keeps everything. csv keeps what
/// TextOfTable says, xlsx what WorkbookOfTable says, and what they lose of the values is the result, a line per
/// variable (see DelimitedLosses). The missing code isn't kept: reading chooses one.
///
/// The new file is read back before it takes its name, and compared with the table as far as the format can hold it. A
/// file that stands there already is replaced as a whole or, after a failure, left as it was; no other file is left. A
/// device or pipe is written as it stands and not read back.
/// `cancelled` is asked now and then, the last time right before the file is replaced; `progress` is told how much is
/// done.
/// Throws DataError when the file can't be written or the format can't hold the table, naming the variable; Interrupted
/// when cancelled.
std::vector<std::string> WriteDataFile(const DataTable& table, const std::string& path,
                                       const std::function<bool()>& cancelled = {}, const ProgressTaker& progress = {});
/// The same in the format of an extension, one that is written, whatever the path ends with: for the standard output.
std::vector<std::string> WriteDataFileAs(std::string_view format, const DataTable& table, const std::string& path,
                                         const std::function<bool()>& cancelled = {},
                                         const ProgressTaker& progress = {});

}  // namespace quillara
