#pragma once

#include <string>

#include "workbench/formats/ReadOptions.h"
#include "workbench/formats/WorkMonitor.h"
#include "workbench/formats/ZipArchive.h"

namespace quillara {

/// The cells of the chosen sheet of an OpenDocument spreadsheet, as text of FieldRows: numbers as they stand, dates
/// and times, truth as TRUE and FALSE, errors as missing data. Throws as ReadXml, FieldRows and ChosenSheet do, and
/// DataError when the sheet is empty.
[[nodiscard]] std::string TextOfOpenDocument(const ZipArchive& archive, const ReadOptions& options,
                                             WorkMonitor& monitor);

}  // namespace quillara
