#include "workbench/formats/WorkbookReader.h"

#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/formats/DelimitedTable.h"
#include "workbench/formats/OpenDocumentSheet.h"
#include "workbench/formats/WorkbookSheet.h"

namespace quillara {
namespace {

std::string TextOfWorkbook(const ZipArchive& archive, const ReadOptions& options, WorkMonitor& monitor) {
    if (archive.Has("content.xml")) {
        return TextOfOpenDocument(archive, options, monitor);
    }
    if (!archive.Has("xl/workbook.xml")) {
        throw DataError("\"" + archive.Path() + "\" is no workbook.");
    }
    const WorkbookParts parts = PartsOfWorkbook(archive, monitor);
    const SheetEntry& sheet = parts.Sheets[ChosenSheet(parts.Sheets, archive.Path(), options)];
    FieldRows rows(archive.Path(), monitor);
    ReadWorkbookSheet(archive, parts, sheet.Place, monitor, rows);
    if (rows.Rows() == 0) {
        throw DataError("The sheet \"" + sheet.Name + "\" of \"" + archive.Path() + "\" is empty.");
    }
    return rows.Take();
}

}  // namespace

DataTable ReadWorkbook(const std::string& path, const ReadOptions& options) {
    WorkMonitor monitor(options.Progress, options.Cancelled, MemoryLimit(options.MaxMemory));
    monitor.TellCountsTo(options.Received);
    const ZipArchive archive(path);
    return TableOfSheet(TextOfWorkbook(archive, options, monitor), path, options, monitor);
}

}  // namespace quillara
