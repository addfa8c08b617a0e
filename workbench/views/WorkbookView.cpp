// The documents of runs as an xlsx workbook: a sheet for each, and their list in front.

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "workbench/formats/WorkbookWriter.h"
#include "workbench/views/DocumentViews.h"
#include "workbench/views/GraphTables.h"
#include "workbench/views/ShownTable.h"
#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

constexpr std::string_view ContentsName = "Contents";
constexpr std::size_t WidthOfTexts = 40;

/// A document of a run, and the sheet that it is on.
struct SheetOfDocument {
    std::size_t Run = 0;
    const OutputEntry* Entry = nullptr;
    std::vector<SpreadsheetDocument> Tables;
    std::string Name;

    [[nodiscard]] std::string Title() const {
        const std::vector<std::string>& lines = Tables.front().Title;
        return lines.empty() ? std::string() : ShownLine(lines.front());
    }
};

/// "frequencies sex": what it is and whose.
std::string WantedName(const OutputEntry& entry, const std::string& title) {
    const Subject& about =
        std::visit([](const auto& content) -> const Subject& { return content.About; }, entry.Content);
    const std::string result = entry.Result.empty() ? title : entry.Result;
    const std::string name = about.Name();
    return name.empty() ? result : result + " " + ShownLine(name);
}

/// Names that no other sheet and not the list has; the writer would find others in the order of the sheets.
void NameSheets(std::vector<SheetOfDocument>& sheets) {
    WorkMonitor monitor;
    WorkbookWriter names(monitor);
    names.BeginSheet(ContentsName, 0, {});
    for (SheetOfDocument& sheet : sheets) {
        sheet.Name = names.BeginSheet(WantedName(*sheet.Entry, sheet.Title()), 0, {});
    }
}

std::vector<SheetOfDocument> SheetsOf(std::span<const OutputCollection> runs) {
    std::vector<SheetOfDocument> sheets;
    for (std::size_t run = 0; run < runs.size(); ++run) {
        for (const OutputEntry& entry : runs[run].Entries) {
            sheets.push_back({run, &entry, TablesOf(entry.Content), {}});
        }
    }
    NameSheets(sheets);
    return sheets;
}

class WorkbookDrawing {
  public:
    WorkbookDrawing(WorkbookWriter& book, const GraphPainter& paint) : Book(book), Paint(paint) {}

    void AddContents(std::span<const OutputCollection> runs, const std::vector<SheetOfDocument>& sheets) {
        Book.BeginSheet(ContentsName, 0, {WidthOfTexts, WidthOfTexts, 2 * WidthOfTexts});
        for (std::size_t run = 0; run < runs.size(); ++run) {
            AddRun(runs[run]);
            Row({"Sheet", "Step", "Title"}, CellStyle::Heading);
            for (const SheetOfDocument& sheet : sheets) {
                if (sheet.Run == run) {
                    Book.AddLink(sheet.Name, sheet.Name);
                    Book.Add(StepText(runs[run], sheet.Entry->Step));
                    Book.Add(sheet.Title());
                    Book.EndRow();
                }
            }
            Book.EndRow();
        }
    }

    void AddSheet(const SheetOfDocument& sheet) {
        const std::vector<std::string> titles = TitlesOf(sheet.Tables.front());
        const auto* graph = std::get_if<GraphDocument>(&sheet.Entry->Content);
        const bool hasPicture = graph != nullptr && Paint;
        const std::size_t frozen = hasPicture ? 0 : titles.size() + (titles.empty() ? 1 : 2);
        Book.BeginSheet(sheet.Name, frozen, WidthsOf(sheet.Tables.front()));
        for (const std::string& line : titles) {
            Row({line}, &line == &titles.front() ? CellStyle::Title : CellStyle::Plain);
        }
        if (!titles.empty()) {
            Book.EndRow();
        }
        if (hasPicture) {
            AddPicture(Paint(*graph, PictureUse::Workbook));
        }
        for (const SpreadsheetDocument& table : sheet.Tables) {
            if (&table != &sheet.Tables.front()) {
                Book.EndRow();
            }
            AddTable(table);
        }
    }

  private:
    /// A PNG holds its size at its front.
    void AddPicture(std::string png) {
        constexpr std::size_t widthAt = 16;
        constexpr std::size_t heightAt = 20;
        const auto numberAt = [&png](std::size_t place) {
            std::size_t number = 0;
            for (std::size_t i = 0; i < 4; ++i) {
                number = number * 256 + static_cast<unsigned char>(png.at(place + i));
            }
            return number;
        };
        const std::size_t width = numberAt(widthAt);
        const std::size_t height = numberAt(heightAt);
        Book.AddPicture(std::move(png), width, height);
    }

    void AddRun(const OutputCollection& run) {
        Row({ShownLine(run.FileName)}, CellStyle::Title);
        Row({std::to_string(run.Cases) + (run.Cases == 1 ? " case" : " cases")}, CellStyle::Plain);
        for (const std::string& setting : run.Settings) {
            Row({ShownLine(setting)}, CellStyle::Plain);
        }
        for (const Remark& remark : run.Noticed.All()) {
            Row({ShownLine(remark.Line())}, CellStyle::Plain);
        }
        Book.EndRow();
    }

    void Row(const std::vector<std::string>& texts, CellStyle style) {
        for (const std::string& text : texts) {
            Book.Add(text, style);
        }
        Book.EndRow();
    }

    static std::vector<std::string> TitlesOf(const SpreadsheetDocument& table) {
        std::vector<std::string> titles;
        for (const std::string& title : table.Title) {
            for (const std::string& line : ShownLines(title)) {
                titles.push_back(line);
            }
        }
        return titles;
    }

    static std::vector<std::size_t> WidthsOf(const SpreadsheetDocument& table) {
        constexpr std::size_t narrowest = 10;
        std::size_t names = narrowest;
        for (const SpreadsheetRow& row : table.Rows) {
            names = std::max(names, DisplayWidth(ShownLine(row.NameForPeople())));
        }
        std::vector<std::size_t> widths = {names};
        for (const SpreadsheetColumn& column : table.Columns) {
            widths.push_back(std::max(narrowest, DisplayWidth(ShownLine(column.Name))));
        }
        return widths;
    }

    void AddTable(const SpreadsheetDocument& table) {
        Book.Add(ShownLine(table.Corner), CellStyle::Heading);
        for (const SpreadsheetColumn& column : table.Columns) {
            Book.Add(ShownLine(column.Name), CellStyle::Heading);
        }
        Book.EndRow();
        for (const SpreadsheetRow& row : table.Rows) {
            Book.Add(ShownLine(row.NameForPeople()));
            for (std::size_t i = 0; i < row.Cells.size(); ++i) {
                AddCell(row.Cells[i], i < table.Columns.size() ? StyleOf(table.Columns[i]) : CellStyle::Plain);
            }
            Book.EndRow();
        }
        if (const std::string missing = MissingText(table); !missing.empty()) {
            Row({missing}, CellStyle::Plain);
        }
    }

    static CellStyle StyleOf(const SpreadsheetColumn& column) {
        const bool isPercent = column.Name.find("Percent") != std::string::npos;
        return column.Whole ? CellStyle::Whole : isPercent ? CellStyle::Percent : CellStyle::Decimals;
    }

    void AddCell(const SpreadsheetCell& cell, CellStyle style) {
        if (const double* number = std::get_if<double>(&cell)) {
            const bool isWhole = std::floor(*number) == *number;
            Book.Add(*number, isWhole && style == CellStyle::Decimals ? CellStyle::Plain : style);
        } else if (const auto* text = std::get_if<std::string>(&cell)) {
            Book.Add(ShownLine(*text));
        } else {
            Book.AddEmpty();
        }
    }

    WorkbookWriter& Book;
    const GraphPainter& Paint;
};

}  // namespace

std::string WorkbookView(std::span<const OutputCollection> runs, const GraphPainter& paint) {
    const std::vector<SheetOfDocument> sheets = SheetsOf(runs);
    WorkMonitor monitor;
    WorkbookWriter book(monitor);
    WorkbookDrawing drawing(book, paint);
    drawing.AddContents(runs, sheets);
    for (const SheetOfDocument& sheet : sheets) {
        drawing.AddSheet(sheet);
    }
    return book.Finish();
}

}  // namespace quillara
