#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cstring>

#include "tests/workbench/support/TestAnalysis.h"
#include "workbench/support/LongTexts.h"

using quillara::DataTable;
using quillara::LongTextKey;
using quillara::SpreadsheetCell;
using quillara::SpreadsheetDocument;
using testing::ElementsAre;

namespace {

/// Flat arrays of up to two rows and columns, as a table of results lays them out.
struct FlatArrays {
    int Rows;
    int Columns;
    std::vector<double> Numbers = std::vector<double>(4, std::bit_cast<double>(~std::uint64_t{0}));
    std::string Cells = std::string(32, '\0');
    std::vector<signed char> Formats = {0, 0};
    std::string ColumnNames = std::string(17, '\0');
    std::string RowNames = std::string(25, '\0');
    std::string Titles = std::string(240, '\0');
};

void Put(std::string& fields, std::size_t position, const std::string& text) {
    fields.replace(position, text.size(), text);
}

struct Spreadsheets : testing::Test {
    Spreadsheets() {
        Host.Document.Services.TakeSpreadsheet = [this](SpreadsheetDocument document) { Shown = std::move(document); };
        Host.Document.RunSequence();
    }

    void Show(const FlatArrays& table) {
        short statuses[3] = {0, 1, 1};
        Host.Analysis->looka4(table.Numbers.data(), table.Cells.data(), table.Formats.data(), table.ColumnNames.data(),
                              nullptr, table.RowNames.data(), table.Titles.data(), table.Rows, table.Columns,
                              table.Rows, table.Columns, 16, 6, 14, 10, 80, 1, 0, 12, 8, 8, 9217, 0, nullptr, nullptr,
                              nullptr, &statuses[0], &statuses[1], &statuses[2]);
    }

    const DataTable Table = TableOf({Numbers("x", {1})});
    TestHost Host{Table};
    SpreadsheetDocument Shown;
};

TEST_F(Spreadsheets, CellsAreTextsBeforeNumbersBeforeNothing) {
    FlatArrays table{.Rows = 2, .Columns = 2};
    table.Numbers[0] = 3;
    table.Numbers[1] = std::numeric_limits<double>::quiet_NaN();
    Put(table.Cells, 16, "12345678");
    table.Numbers[2] = 5;
    table.Formats = {-8, static_cast<signed char>(156)};
    Show(table);
    ASSERT_EQ(Shown.Rows.size(), 2U);
    EXPECT_EQ(Shown.Rows[0].Cells, (std::vector<SpreadsheetCell>{3.0, "12345678"}));
    EXPECT_TRUE(std::isnan(std::get<double>(Shown.Rows[1].Cells[0])));  // not the pattern of an empty cell
    EXPECT_EQ(Shown.Rows[1].Cells[1], SpreadsheetCell());
    EXPECT_TRUE(Shown.Columns[0].Whole);
    EXPECT_FALSE(Shown.Columns[1].Whole);
}

TEST_F(Spreadsheets, TextsAreWhole) {
    const std::string key = LongTextKey("a long name of a variable");
    FlatArrays table{.Rows = 1, .Columns = 1};
    Put(table.Cells, 0, key);
    Put(table.ColumnNames, 0, LongTextKey("Cumulative\nCount"));
    Put(table.RowNames, 0, "twelve bytes" + key);
    Put(table.Titles, 0, std::string(79, 't') + "\xC3\x9F");
    Put(table.Titles, 80, std::string(73, ' ') + key.substr(0, 7));
    std::memcpy(Host.Analysis->Table.CornerLabel, key.data(), key.size());
    Show(table);
    EXPECT_EQ(Shown.Rows[0].Cells[0], SpreadsheetCell("a long name of a variable"));
    EXPECT_EQ(Shown.Columns[0].Name, "Cumulative\nCount");
    EXPECT_EQ(Shown.Rows[0].Name, "twelve bytes");
    EXPECT_THAT(Shown.Title, ElementsAre(std::string(79, 't'), std::string(73, ' ')));
    EXPECT_EQ(Shown.Corner, "a long name of a variable");
}

TEST_F(Spreadsheets, TitlesEndWithTheLastLineThatIsNotEmpty) {
    FlatArrays table{.Rows = 0, .Columns = 1};
    Put(table.Titles, 160, "third");
    Show(table);
    EXPECT_THAT(Shown.Title, ElementsAre("", "", "third"));
    EXPECT_TRUE(Shown.Rows.empty());
    EXPECT_EQ(Shown.Columns.size(), 1U);
}

}  // namespace
