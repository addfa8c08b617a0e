#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/formats/WorkMonitor.h"

namespace quillara {

class ZipMaker;

/// How a cell of a workbook is shown.
enum class CellStyle { Plain, Heading, Title, Whole, Percent, Decimals, Date, Time, DateTime, Link };

/// Makes an xlsx workbook, sheet by sheet, row by row.
class WorkbookWriter {
  public:
    /// The monitor must outlive the writer.
    explicit WorkbookWriter(WorkMonitor& monitor) : Monitor(monitor) {}

    /// A new sheet; the rows above `frozenRows` stay in sight. Its name loses what sheets can't be called and what is
    /// too much, and gets a number where it is another's: what it is called is the result.
    std::string BeginSheet(std::string_view name, std::size_t frozenRows, const std::vector<std::size_t>& widths);

    /// The next cell of the row. Throws DataError for a text longer than a cell holds.
    void Add(std::string_view text, CellStyle style = CellStyle::Plain);
    void Add(double number, CellStyle style = CellStyle::Plain);
    void AddEmpty() { ++Column; }
    /// A cell that leads to a sheet.
    void AddLink(std::string_view text, const std::string& sheet);
    /// A picture in PNG over the rows from here on, of so many pixels; the next row stands below it.
    void AddPicture(std::string png, std::size_t width, std::size_t height);
    /// Throws DataError when the sheet has more rows or the row more cells than sheets hold; Interrupted.
    void EndRow();

    /// The bytes of the workbook; nothing can be added any more.
    [[nodiscard]] std::string Finish();

  private:
    struct Picture {
        std::string Png;
        std::size_t Row = 0;  ///< from 0
        std::size_t Width = 0;  ///< pixels
        std::size_t Height = 0;
    };
    struct Sheet {
        std::string Name;
        std::string Cells;
        std::string Links;
        std::vector<Picture> Pictures;
    };
    /// What a sheet's pictures are in the file: its drawing and their files.
    struct DrawingParts;

    [[nodiscard]] static DrawingParts PartsOf(const Sheet& sheet, std::size_t firstImage);
    /// Behind so many images of other sheets.
    static void AddDrawing(ZipMaker& zip, Sheet& sheet, std::size_t place, std::size_t images);
    void BeginCell(CellStyle style, std::string_view type);
    [[nodiscard]] std::string Place() const;

    WorkMonitor& Monitor;
    std::vector<Sheet> Sheets;
    std::string RowCells;
    std::size_t Row = 1;
    std::size_t Column = 0;
};

}  // namespace quillara
