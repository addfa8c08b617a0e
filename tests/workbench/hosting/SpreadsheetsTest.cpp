#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>

#include "platform/WindowMessages.h"
#include "tests/workbench/hosting/TestAnalysis.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/LongTexts.h"

namespace quillara {
namespace {

using testing::ElementsAre;

/// Flat arrays of up to two rows and columns, as a table of results lays them out, and what the host makes of them.
struct Spreadsheets : testing::Test {
    std::vector<double> Values = std::vector<double>(4, std::bit_cast<double>(~std::uint64_t{0}));
    std::string Cells = std::string(32, '\0');
    std::vector<signed char> Formats = {0, 0};
    std::string ColumnNames = std::string(17, '\0');
    std::string RowNames = std::string(25, '\0');
    std::string Titles = std::string(240, '\0');
    const DataTable Table = TableOf({Numbers("x", {1})});
    TestHost Host{Table};
    std::string Origins;  ///< of the documents shown

    static void Put(std::string& fields, std::size_t position, const std::string& text) {
        fields.replace(position, text.size(), text);
    }
    SpreadsheetDocument Shown(int rows, int columns, const std::string& corner = "") {
        SpreadsheetDocument shown;
        short statuses[3] = {0, 1, 1};
        Host.Document.Services.TakeDocument = [&](ResultDocument& document) {
            shown = *document.Spreadsheet();
            Origins +=
                std::to_string(document.Origin().Command) + '.' + std::to_string(document.Origin().Sequence) + ' ';
        };
        Host.Document.RunSequence();
        std::memcpy(Host.Analysis->Table.CornerLabel, corner.data(), corner.size());
        Host.Analysis->looka4(Values.data(), Cells.data(), Formats.data(), ColumnNames.data(), nullptr, RowNames.data(),
                              Titles.data(), rows, columns, rows, columns, 16, 6, 14, 10, 80, 1, 0, 12, 8, 8, 9217, 0,
                              nullptr, nullptr, nullptr, &statuses[0], &statuses[1], &statuses[2]);
        return shown;
    }
};

TEST_F(Spreadsheets, CellsAreTextsBeforeNumbersBeforeNothing) {
    Values = {3, Missing, 5, Values[3]};
    Put(Cells, 16, "12345678");
    Formats = {-8, static_cast<signed char>(156)};
    const SpreadsheetDocument shown = Shown(2, 2);
    ASSERT_EQ(shown.Rows.size(), 2U);
    EXPECT_EQ(shown.Rows[0].Cells, (std::vector<SpreadsheetCell>{3.0, "12345678"}));
    EXPECT_TRUE(std::isnan(std::get<double>(shown.Rows[1].Cells[0])));  // not the pattern of an empty cell
    EXPECT_EQ(shown.Rows[1].Cells[1], SpreadsheetCell());
    EXPECT_TRUE(shown.Columns[0].Whole);
    EXPECT_FALSE(shown.Columns[1].Whole);
}

TEST_F(Spreadsheets, TextsAreWhole) {
    const std::string key = LongTextKey("a long name of a variable");
    Put(Cells, 0, key);
    Put(ColumnNames, 0, LongTextKey("Cumulative\nCount"));
    Put(RowNames, 0, "twelve bytes" + key);
    Put(Titles, 0, std::string(79, 't') + "\xC3\x9F");
    Put(Titles, 80, std::string(73, ' ') + key.substr(0, 7));
    const SpreadsheetDocument shown = Shown(1, 1, key);
    EXPECT_EQ(shown.Rows[0].Cells[0], SpreadsheetCell("a long name of a variable"));
    EXPECT_EQ(shown.Columns[0].Name, "Cumulative\nCount");
    EXPECT_EQ(shown.Rows[0].Name, "twelve bytes");
    EXPECT_THAT(shown.Title, ElementsAre(std::string(79, 't'), std::string(73, ' ')));
    EXPECT_EQ(shown.Corner, "a long name of a variable");
}

TEST_F(Spreadsheets, TitlesEndWithTheLastLineThatIsNotEmpty) {
    Put(Titles, 160, "third");
    const SpreadsheetDocument shown = Shown(0, 1);
    EXPECT_THAT(shown.Title, ElementsAre("", "", "third"));
    EXPECT_TRUE(shown.Rows.empty());
    EXPECT_EQ(shown.Columns.size(), 1U);
}

TEST_F(Spreadsheets, AreNumberedWithinTheirCommand) {
    std::optional<ActiveCommand>& command = quillara::DialogsOf(&Host.Document).Command;
    Shown(1, 1);
    command = ActiveCommand{WindowMessage::Command, (2U << 16) + 9060, 0};
    Shown(1, 1);
    Shown(1, 1);
    EXPECT_EQ(command->OutputIndex, 2);
    command = ActiveCommand{WindowMessage::InitDialog, 7, 0};
    Shown(1, 1);
    command.reset();
    Shown(1, 1);
    EXPECT_EQ(Origins, "0.1 9060.1 9060.2 0.1 0.2 ");
    EXPECT_EQ(Host.Document.Documents().OfAnalysis().size(), 1U) << "the last one; nobody has kept another";
}

}  // namespace
}  // namespace quillara
