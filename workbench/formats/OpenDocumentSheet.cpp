#include "workbench/formats/OpenDocumentSheet.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "workbench/data/Errors.h"
#include "workbench/formats/FieldRows.h"
#include "workbench/formats/SheetChoice.h"
#include "workbench/formats/XmlReader.h"

namespace quillara {
namespace {

constexpr std::uint32_t MostRepeated = 1U << 24U;  // more than any program's rows or columns

/// "PT12H30M05S" as 12:30:05; nothing for another text.
std::optional<std::string> ClockOfDuration(std::string_view duration) {
    if (!duration.starts_with("PT")) {
        return std::nullopt;
    }
    std::string clock;
    const char* at = duration.data() + 2;
    const char* const end = duration.data() + duration.size();
    for (const char unit : {'H', 'M', 'S'}) {
        unsigned count = 0;
        const auto [behind, error] = std::from_chars(at, end, count);
        if (error == std::errc() && behind != end && (*behind == unit || (unit == 'S' && *behind == '.'))) {
            at = behind + 1;
        } else {
            count = 0;
        }
        const std::string digits = std::to_string(count);
        clock += (clock.empty() ? "" : ":") + (digits.size() < 2 ? "0" + digits : digits);
    }
    return clock;
}

/// All sheets in turn; the rows of the wanted one.
class OpenDocumentTaker : public XmlTaker {
  public:
    OpenDocumentTaker(const ZipArchive& archive, WorkMonitor& monitor, std::optional<std::size_t> wanted)
        : Archive(archive), Wanted(wanted), Rows(archive.Path(), monitor) {}

    std::vector<SheetEntry> Sheets;

    [[nodiscard]] FieldRows& Cells() { return Rows; }

    void Begin(std::string_view element, const XmlAttributes& attributes) override {
        if (element == "table" && TableDepth++ == 0) {
            Sheets.push_back({.Name = std::string(attributes["table:name"])});
        } else if (element == "annotation" || IsAside > 0) {
            ++IsAside;
        } else if (!Wanted || *Wanted + 1 != Sheets.size() || TableDepth != 1) {
            return;
        } else if (element == "table-row") {
            RowsRepeated = Repeated(attributes["table:number-rows-repeated"]);
            Row.clear();
            Column = 0;
        } else if (element == "table-cell" || element == "covered-table-cell") {
            BeginCell(attributes);
        } else if (IsCell) {
            BeginOfText(element, attributes);
        }
    }

    void End(std::string_view element) override {
        if (element == "table") {
            --TableDepth;
        } else if (IsAside > 0) {
            --IsAside;
        } else if (element == "p") {
            IsParagraph = false;
        } else if (IsCell && (element == "table-cell" || element == "covered-table-cell")) {
            TakeCell();
        } else if (element == "table-row") {
            TakeRow();
        }
    }

    void Text(std::string_view text) override {
        if (IsParagraph && IsAside == 0) {
            Paragraphs += text;
        }
    }

  private:
    struct Cell {
        std::size_t Column = 0;
        std::size_t Repeated = 1;
        std::string Field;
    };

    [[nodiscard]] std::size_t Repeated(std::string_view text) const {
        if (text.empty()) {
            return 1;
        }
        std::uint32_t count = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
        if (error != std::errc() || end != text.data() + text.size() || count > MostRepeated) {
            Archive.RefuseDamaged();
        }
        return count;
    }

    void BeginCell(const XmlAttributes& attributes) {
        CellsRepeated = Repeated(attributes["table:number-columns-repeated"]);
        Type = attributes["office:value-type"];
        IsError = attributes["calcext:value-type"] == "error";
        HasValue = true;
        Paragraphs.clear();
        HasParagraph = false;
        IsCell = true;
        if (Type == "float" || Type == "percentage" || Type == "currency") {
            Value = attributes["office:value"];
        } else if (Type == "date") {
            Value = attributes["office:date-value"];
            constexpr std::string_view midnight = "T00:00:00";
            Value.resize(Value.size() - (Value.ends_with(midnight) ? midnight.size() : 0));
        } else if (Type == "time") {
            const std::string_view duration = attributes["office:time-value"];
            Value = ClockOfDuration(duration).value_or(std::string(duration));
        } else if (Type == "boolean") {
            Value = attributes["office:boolean-value"] == "true" ? "TRUE" : "FALSE";
        } else {
            Value = attributes["office:string-value"];
            HasValue = !Value.empty();
        }
    }

    void BeginOfText(std::string_view element, const XmlAttributes& attributes) {
        if (element == "p") {
            Paragraphs += HasParagraph ? "\n" : "";
            HasParagraph = true;
            IsParagraph = true;
        } else if (element == "s") {
            Paragraphs.append(Repeated(attributes["text:c"]), ' ');
        } else if (element == "tab") {
            Paragraphs += '\t';
        } else if (element == "line-break") {
            Paragraphs += '\n';
        }
    }

    void TakeCell() {
        IsCell = false;
        const bool isFilled = !Type.empty() || HasParagraph;
        if (isFilled) {
            Row.push_back({Column, CellsRepeated, IsError ? "" : HasValue ? Value : Paragraphs});
        }
        Column += CellsRepeated;
        if (Column > MostRepeated) {
            Archive.RefuseDamaged();
        }
    }

    void TakeRow() {
        if (Row.empty()) {
            Rows.PassRows(RowsRepeated);
            RowsRepeated = 0;
        }
        for (; RowsRepeated > 0; --RowsRepeated) {
            for (const Cell& cell : Row) {
                for (std::size_t i = 0; i < cell.Repeated; ++i) {
                    Rows.AddAt(cell.Column + i, cell.Field);
                }
            }
            Rows.EndRow();
        }
    }

    const ZipArchive& Archive;
    std::optional<std::size_t> Wanted;  // from 0; nothing: only the names
    FieldRows Rows;
    std::vector<Cell> Row;
    std::size_t RowsRepeated = 0;
    std::size_t CellsRepeated = 1;
    std::size_t Column = 0;
    std::string Type;
    std::string Value;
    std::string Paragraphs;
    int TableDepth = 0;
    int IsAside = 0;  // elements of a note beside the cell
    bool IsCell = false;
    bool IsParagraph = false;
    bool HasParagraph = false;
    bool HasValue = false;
    bool IsError = false;
};

}  // namespace

std::string TextOfOpenDocument(const ZipArchive& archive, const ReadOptions& options, WorkMonitor& monitor) {
    OpenDocumentTaker names(archive, monitor, std::nullopt);
    ReadXml(archive, "content.xml", monitor, names);
    const std::size_t chosen = ChosenSheet(names.Sheets, archive.Path(), options);
    OpenDocumentTaker taker(archive, monitor, chosen);
    ReadXml(archive, "content.xml", monitor, taker);
    if (taker.Cells().Rows() == 0) {
        throw DataError("The sheet \"" + names.Sheets[chosen].Name + "\" of \"" + archive.Path() + "\" is empty.");
    }
    return taker.Cells().Take();
}

}  // namespace quillara
