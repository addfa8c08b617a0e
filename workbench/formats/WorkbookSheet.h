#pragma once

#include <string>

#include "workbench/formats/FieldRows.h"
#include "workbench/formats/WorkbookParts.h"

namespace quillara {

/// Gathers the cells of a sheet of an xlsx workbook: numbers as they stand, dates and times by their formats, truth as
/// TRUE and FALSE, errors as missing data, formulas as their values. Throws as ReadXml and FieldRows do.
void ReadWorkbookSheet(const ZipArchive& archive, const WorkbookParts& parts, const std::string& place,
                       WorkMonitor& monitor, FieldRows& rows);

}  // namespace quillara
