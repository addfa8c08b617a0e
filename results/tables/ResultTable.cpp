#include "results/tables/ResultTable.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <utility>

#include "engine/DrillDown.h"
#include "engine/HostArrays.h"

using namespace drilldown;

namespace {

constexpr std::int32_t DefaultRowNameWidth = 12;
constexpr std::size_t TextSize = ResultTable::TextWidth;
constexpr std::size_t HeaderRowsOffset = 12;
constexpr std::size_t HeaderColumnsOffset = 14;
constexpr std::size_t HeaderFixedPart = 16;

/// Numbers of the host's spreadsheet call that never change.
constexpr int HeaderOffset = 16;
constexpr int HeaderCount = 6;
constexpr int TitleMode = 1;
constexpr int FirstRow = 0;
constexpr int FieldMargin = 2;

template <typename T>
bool Take(CDrillDown& analysis, T*& array, std::size_t count) {
    void* address = nullptr;
    if (analysis.AllocMem(&address, static_cast<unsigned long>(count * sizeof(T))) != 0) {
        return false;
    }
    array = static_cast<T*>(address);
    return true;
}

/// The host's block keeps the low 16 bits of a count; the count itself goes with the call.
void WriteCount(unsigned char* place, std::int32_t count) {
    const auto low = static_cast<std::uint16_t>(count);
    std::memcpy(place, &low, sizeof low);
}

}  // namespace

ResultTable::ResultTable(CDrillDown& analysis, std::size_t rows, std::size_t columns)
    : Rows(static_cast<std::int32_t>(rows)),
      Cols(static_cast<std::int32_t>(columns)),
      RowNameWidth(analysis.Names.CaseNameWidth != 0 ? analysis.Names.CaseNameWidth : DefaultRowNameWidth),
      Title{},
      Analysis(analysis) {
    std::fill(std::begin(analysis.Table.CornerLabel), std::end(analysis.Table.CornerLabel), '\0');
    if (!Allocate()) {
        Release();
    }
}

ResultTable::~ResultTable() {
    Release();
}

bool ResultTable::Allocate() {
    const auto rows = static_cast<std::size_t>(Rows);
    const auto columns = static_cast<std::size_t>(Cols);
    const std::size_t cells = rows * columns;
    const bool taken = Take(Analysis, Data, cells) && Take(Analysis, Text, cells * TextSize) &&
                       Take(Analysis, ColFormat, columns) && Take(Analysis, ColNames, columns * TextSize + 1) &&
                       Take(Analysis, ColLongNames, columns * TextSize + 1) &&
                       Take(Analysis, RowNames, rows * static_cast<std::size_t>(RowNameWidth) + 1) &&
                       Take(Analysis, Header, columns + HeaderFixedPart + (columns + 1) * (rows + 1) / 8);
    if (taken && cells != 0) {
        std::memset(Data, 0xFF, cells * sizeof(double));
    }
    return taken;
}

void ResultTable::Release() {
    GiveBack(Analysis, Data);
    GiveBack(Analysis, Text);
    GiveBack(Analysis, ColFormat);
    GiveBack(Analysis, ColNames);
    GiveBack(Analysis, ColLongNames);
    GiveBack(Analysis, RowNames);
    GiveBack(Analysis, Header);
}

// Header is the array taken last, and never an empty one: where it is, all are.

bool ResultTable::HoldsRow(std::size_t row) const {
    return Header != nullptr && row < static_cast<std::size_t>(Rows);
}

bool ResultTable::HoldsColumn(std::size_t column) const {
    return Header != nullptr && column < static_cast<std::size_t>(Cols);
}

std::size_t ResultTable::Cell(std::size_t row, std::size_t column) const {
    return column * static_cast<std::size_t>(Rows) + row;
}

char* ResultTable::CellField(std::size_t row, std::size_t column) const {
    return Text + Cell(row, column) * TextSize;
}

char* ResultTable::ColumnField(std::size_t column) const {
    return ColNames + column * TextSize;
}

char* ResultTable::RowField(std::size_t row) const {
    return RowNames + row * static_cast<std::size_t>(RowNameWidth);
}

void ResultTable::FillField(char* field, std::int32_t width, std::string text) {
    const auto room = static_cast<std::size_t>(width);
    // Intended: blanks at the end belong to the text, unlike in names of variables, which are trimmed; hosts look names
    // of columns up exactly as they were made.
    if (text.size() > room) {
        Analysis.Get8CharHash(text);
    }
    std::memset(field, 0, room);
    std::memcpy(field, text.data(), std::min(room, text.size()));
}

void ResultTable::SetTitle(std::size_t line, const std::string& text) {
    if (line < TitleLines) {
        std::memset(Title[line], 0, TitleWidth);
        std::memcpy(Title[line], text.data(), std::min(TitleWidth, text.size()));
    }
}

void ResultTable::SetColumnName(std::size_t column, std::string text) {
    if (HoldsColumn(column)) {
        FillField(ColumnField(column), CellWidth, std::move(text));
    }
}

void ResultTable::SetRowName(std::size_t row, std::string text) {
    if (HoldsRow(row)) {
        FillField(RowField(row), RowNameWidth, std::move(text));
    }
}

void ResultTable::SetCellText(std::size_t row, std::size_t column, std::string text) {
    if (HoldsRow(row) && HoldsColumn(column)) {
        FillField(CellField(row, column), CellWidth, std::move(text));
        // Intended: the whole column, unlike the numbers of its other rows, which stay; the display of "-" and of
        // descriptions depends on it.
        ColFormat[column] = TextColumn;
    }
}

void ResultTable::SetNumber(std::size_t row, std::size_t column, double value) {
    if (HoldsRow(row) && HoldsColumn(column)) {
        Data[Cell(row, column)] = value;
    }
}

void ResultTable::ShowWhole(std::size_t column) {
    if (HoldsColumn(column)) {
        ColFormat[column] = static_cast<signed char>(-CellWidth);
    }
}

std::int16_t ResultTable::HandOver() {
    if (!*this) {
        return 0;
    }
    WriteCount(Header + HeaderRowsOffset, Rows);
    WriteCount(Header + HeaderColumnsOffset, Cols);
    std::array<short, 3> status{0, 1, 1};
    Analysis.SetResultSubject(std::exchange(Subject, {}));
    return Analysis.looka4(Data, Text, ColFormat, ColNames, ColLongNames, RowNames, Title[0], Rows, Cols, Rows, Cols,
                           HeaderOffset, HeaderCount, RowNameWidth + FieldMargin, CellWidth + FieldMargin,
                           static_cast<int>(TitleWidth), TitleMode, FirstRow, RowNameWidth, TextWidth, CellWidth,
                           Options, 0, nullptr, nullptr, Header, &status[0], &status[1], &status[2]);
}

std::int16_t ResultTable::Output() {
    const std::int16_t result = Suppress == 1 ? std::int16_t{1} : HandOver();
    Release();
    return result;
}
