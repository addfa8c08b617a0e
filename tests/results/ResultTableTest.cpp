#include "results/tables/ResultTable.h"

#include "tests/results/ResultsBench.h"

namespace drilltest {

class ResultTableTest : public ResultsBench {
  protected:
    void SetUp() override {
        quillara::Variable x = Numbers("x", {1, 2, NA});
        x.Labels[1] = {"one", "The first of the values"};
        Table = TableOf({x, Numbers("y", {1.5, 2, 3})});
        Open(Table);
    }

    static std::string Field(const void* field, std::size_t width) { return {static_cast<const char*>(field), width}; }

    quillara::DataTable Table;
};

TEST_F(ResultTableTest, TextsFillTheirFieldsOrBecomeKeys) {
    ResultTable table(Analysis(), 2, 2);
    table.SetColumnName(0, "12345678");
    table.SetColumnName(1, "Mean          ");
    EXPECT_EQ(Field(table.ColNames, 16), "12345678" + LongTextKey("Mean          "));
    table.SetRowName(0, "123456789012");
    table.SetRowName(1, "1234567890123");
    EXPECT_EQ(Field(table.RowNames, 24), "123456789012" + LongTextKey("1234567890123") + std::string(4, '\0'));
    table.SetCellText(1, 1, "longer");
    table.SetCellText(1, 1, "ab ");
    EXPECT_EQ(Field(table.Text, 32), std::string(24, '\0') + "ab " + std::string(5, '\0'));
    table.SetTitle(1, std::string(90, 'x'));
    EXPECT_EQ(Field(table.Title[1], 81), std::string(80, 'x') + '\0');
}

TEST_F(ResultTableTest, CellsWithoutNumberStayMarked) {
    ResultTable table(Analysis(), 2, 2);
    table.SetNumber(1, 0, 7);
    table.SetCellText(0, 0, "-");
    table.ShowWhole(1);
    EXPECT_EQ(table.Data[1], 7);
    EXPECT_EQ(Field(table.Data, 8), std::string(8, '\xFF'));
    EXPECT_EQ(Field(table.ColFormat, 2), "\x9C\xF8");  // 156 and -8
}

TEST_F(ResultTableTest, PlacesOutsideArePassedOverAndOutputIsOnce) {
    ResultTable table(Analysis(), 1, 1);
    ResultTable suppressed(Analysis(), 1, 1);
    suppressed.Suppress = 1;
    EXPECT_EQ(suppressed.Output(), 1);
    for (const std::size_t place : {std::size_t{1}, ~std::size_t{0}}) {
        table.SetNumber(place, 0, 1);
        table.SetCellText(0, place, "text");
        table.SetRowName(place, "row");
        table.SetColumnName(place, "column");
        table.ShowWhole(place);
    }
    table.SetTitle(3, "fourth");
    EXPECT_EQ(table.Output() + table.Output(), 0);
    EXPECT_EQ(TakeShown(), " | \n | .\n");
}

TEST_F(ResultTableTest, RowNamesAreAsWideAsCaseNames) {
    Table.CaseNames = {std::string(20, 'a'), "b", "c"};
    Open(Table);
    ResultTable table(Analysis(), 1, 1);
    table.SetRowName(0, std::string(20, 'r'));
    EXPECT_EQ(Field(table.RowNames, 21), std::string(20, 'r') + '\0');
}

}  // namespace drilltest
