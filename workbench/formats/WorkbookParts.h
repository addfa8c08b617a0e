#pragma once

#include <string>
#include <vector>

#include "workbench/formats/CellFormats.h"
#include "workbench/formats/SheetChoice.h"
#include "workbench/formats/XmlReader.h"

namespace quillara {

/// What an xlsx workbook says beside its cells.
struct WorkbookParts {
    std::vector<SheetEntry> Sheets;  ///< those of cells
    bool Begins1904 = false;  ///< whether days count from 1904-01-01
    std::vector<CellContent> Styles;  ///< by the number that cells name
    std::vector<std::string> Texts;  ///< likewise
};

/// Throws as ReadXml does.
[[nodiscard]] WorkbookParts PartsOfWorkbook(const ZipArchive& archive, WorkMonitor& monitor);

}  // namespace quillara
