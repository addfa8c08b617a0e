#include <algorithm>
#include <bit>
#include <cstdint>
#include <string_view>
#include <utility>
#include <variant>

#include "host/AnalysisSupport.h"
#include "workbench/documents/NamedParts.h"
#include "workbench/hosting/DocumentSubjects.h"
#include "workbench/hosting/MissingNotes.h"
#include "workbench/hosting/ResultRouting.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/hosting/TextFields.h"

using quillara::FieldArray;
using quillara::SpreadsheetCell;
using quillara::SpreadsheetDocument;
using quillara::TextOfField;

namespace {

constexpr std::size_t TitleLines = 3;
constexpr std::uint64_t NoNumber = ~std::uint64_t{0};

/// The flat arrays of a table, column by column.
struct FlatTable {
    std::size_t Rows;
    std::size_t Columns;
    const double* Numbers;
    const signed char* Formats;
    FieldArray Cells;
    FieldArray ColumnNames;
    FieldArray RowNames;
    FieldArray Titles;
};

SpreadsheetCell CellOf(const FlatTable& table, std::size_t row, std::size_t column) {
    const std::size_t index = column * table.Rows + row;
    const std::string_view text = table.Cells.Field(index);
    if (std::ranges::any_of(text, [](char c) { return c != '\0'; })) {
        return TextOfField(text);
    }
    if (table.Numbers == nullptr || std::bit_cast<std::uint64_t>(table.Numbers[index]) == NoNumber) {
        return std::monostate();
    }
    return table.Numbers[index];
}

std::vector<std::string> TitleOf(const FlatTable& table) {
    std::vector<std::string> title;
    for (std::size_t line = 0; line < TitleLines; ++line) {
        title.push_back(TextOfField(table.Titles.Field(line)));
    }
    while (!title.empty() && title.back().empty()) {
        title.pop_back();
    }
    return title;
}

SpreadsheetDocument DocumentOf(const FlatTable& table) {
    SpreadsheetDocument document;
    document.Title = TitleOf(table);
    for (std::size_t column = 0; column < table.Columns; ++column) {
        const bool whole = table.Formats != nullptr && table.Formats[column] == -table.Cells.Width;
        document.Columns.push_back({TextOfField(table.ColumnNames.Field(column)), whole});
    }
    for (std::size_t row = 0; row < table.Rows; ++row) {
        document.Rows.push_back({TextOfField(table.RowNames.Field(row)), {}});
        for (std::size_t column = 0; column < table.Columns; ++column) {
            document.Rows.back().Cells.push_back(CellOf(table, row, column));
        }
    }
    return document;
}

/// A list of steps counts nothing.
bool HoldsNumbers(const SpreadsheetDocument& document) {
    return std::ranges::any_of(document.Rows, [](const auto& row) {
        return std::ranges::any_of(row.Cells, [](const auto& cell) { return std::holds_alternative<double>(cell); });
    });
}

}  // namespace

short CAnalysisSupport::looka4(const double* data, const char* text, const signed char* columnFormats,
                               const char* columnNames, const char* /*columnLongNames*/, const char* rowNames,
                               const char* title, int rows, int columns, int /*rowCapacity*/, int /*columnCapacity*/,
                               int /*headerOffset*/, int /*headerCount*/, int /*rowNameRoom*/, int /*cellRoom*/,
                               int titleWidth, int /*titleMode*/, int /*firstRow*/, int rowNameWidth,
                               int columnNameWidth, int cellWidth, int /*options*/, int /*reserved*/,
                               void* /*reserved1*/, void* /*reserved2*/, void* /*header*/, short* status1,
                               short* status2, short* status3) {
    constexpr short done = 0;
    if (Document != nullptr) {
        const FlatTable table{static_cast<std::size_t>(std::max(rows, 0)),
                              static_cast<std::size_t>(std::max(columns, 0)),
                              data,
                              columnFormats,
                              {text, cellWidth},
                              {columnNames, columnNameWidth},
                              {rowNames, rowNameWidth},
                              {title, titleWidth}};
        SpreadsheetDocument document = DocumentOf(table);
        if (const OrvTag* shared = quillara::TableOf(Document).Commons.Table) {
            document.Corner = TextOfField({shared->CornerLabel, CornerLabelWidth});
        }
        document.About = quillara::TakeSubject(Document);
        if (!HoldsNumbers(document)) {
            document.About.Weights = quillara::WeightUse::None;
        }
        quillara::NameParts(document);
        document.Missing = quillara::MissingIn(Document, document);
        quillara::RouteResult(*this, std::move(document));
    }
    for (short* status : {status1, status2, status3}) {
        if (status != nullptr) {
            *status = done;
        }
    }
    return done;
}
