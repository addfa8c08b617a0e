#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/ResultSubject.h"

class CDrillDown;

/// One spreadsheet on its way to the host: flat arrays in the layout that CAnalysisSupport::looka4 tells, which a
/// result fills and Output hands over. Rows and columns count from 0.
///
/// A text longer than its field goes in as its 8-byte key, cut to the field; trailing blanks belong to a text. Places
/// outside the table are passed over. Without memory, and after Release, the table has no arrays: the writers do
/// nothing and Output makes no document.
class ResultTable {
  public:
    static constexpr std::size_t TitleLines = 3;
    static constexpr std::size_t TitleWidth = 80;
    static constexpr std::int32_t TextWidth = 8;

    /// Takes the arrays from the host and clears the corner label of the next spreadsheet. The analysis outlives
    /// the table.
    ResultTable(CDrillDown& analysis, std::size_t rows, std::size_t columns);
    ResultTable(const ResultTable&) = delete;
    ResultTable& operator=(const ResultTable&) = delete;
    ~ResultTable();
    /// False without memory and after Release.
    explicit operator bool() const { return Header != nullptr; }

    /// One line of the title, from 0, cut to TitleWidth bytes.
    void SetTitle(std::size_t line, const std::string& text);
    void SetColumnName(std::size_t column, std::string text);
    void SetRowName(std::size_t row, std::string text);
    /// A text cell, which makes its column a text column for good.
    void SetCellText(std::size_t row, std::size_t column, std::string text);
    void SetNumber(std::size_t row, std::size_t column, double value);
    /// Gives a column the display of whole numbers.
    void ShowWhole(std::size_t column);

    /// Tells the host the subject, hands the table over and releases it. Gives the host's status; 0 without memory; 1,
    /// and hands nothing over, with Suppress 1.
    std::int16_t Output();
    /// Gives the arrays back; may be repeated.
    void Release();

    // Data, in the order of the record. The arrays are the host's memory.

    std::int32_t Rows;  ///< number of rows
    std::int32_t Cols;  ///< number of columns
    std::int32_t RowNameWidth;  ///< bytes of a row name: the table's case-name width, or 12
    std::int32_t CellWidth = TextWidth;  ///< bytes of a text cell and of a column name
    std::int32_t Options = 0x2401;  ///< handed to the host as it stands
    double* Data = nullptr;  ///< numbers; all bytes 0xFF: no number
    char* Text = nullptr;  ///< text cells
    signed char* ColFormat = nullptr;  ///< display of a column: 0, minus CellWidth (whole), or TextColumn
    char* ColNames = nullptr;  ///< column names
    char* ColLongNames = nullptr;  ///< second column names; written for raw data only
    char* RowNames = nullptr;  ///< row names
    unsigned char* Header = nullptr;  ///< block for the host; at output Rows and Cols go in
    char Title[TitleLines][TitleWidth];  ///< title, subset, nothing; a full line has no zero at its end
    std::int16_t Suppress = 0;  ///< 1: Output shows nothing

    ResultSubject Subject;  ///< what the table is about

    /// ColFormat of a column with a text cell: 156 as an unsigned byte.
    static constexpr signed char TextColumn = -100;

  private:
    [[nodiscard]] bool Allocate();
    [[nodiscard]] bool HoldsRow(std::size_t row) const;
    [[nodiscard]] bool HoldsColumn(std::size_t column) const;
    [[nodiscard]] std::size_t Cell(std::size_t row, std::size_t column) const;
    [[nodiscard]] char* CellField(std::size_t row, std::size_t column) const;
    [[nodiscard]] char* ColumnField(std::size_t column) const;
    [[nodiscard]] char* RowField(std::size_t row) const;
    void FillField(char* field, std::int32_t width, std::string text);
    [[nodiscard]] std::int16_t HandOver();

    CDrillDown& Analysis;
};
