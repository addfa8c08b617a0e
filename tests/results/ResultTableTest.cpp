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
    EXPECT_EQ(Sheets(), " | \n | \n");
}

TEST_F(ResultTableTest, RowNamesAreAsWideAsCaseNames) {
    Table.CaseNames = {std::string(20, 'a'), "b", "c"};
    Open(Table);
    ResultTable table(Analysis(), 1, 1);
    table.SetRowName(0, std::string(20, 'r'));
    EXPECT_EQ(Field(table.RowNames, 21), std::string(20, 'r') + '\0');
}

TEST_F(ResultTableTest, ResultsBringTheRecordsUpToDateFirst) {
    Choose({"x"}, {"y"});
    Review({"x"}, {"y"});
    for (const Result result :
         {&CDrillDown::DDNDescriptive, &CDrillDown::RVSummary, &CDrillDown::DDNFrequency, &CDrillDown::RVFrequency}) {
        const std::string fresh = Show(result);
        for (const CDrillDown::DrillSet* set : {Analysis().DrillDowns, Analysis().Reviews}) {
            RecordIn(*set, "y").MissingWeight = RecordIn(*set, "y").Mean = 9;
        }
        Analysis().ValidVar = 0;
        Analysis().DataChanged = 1;
        EXPECT_EQ(Show(result), fresh);
        EXPECT_EQ(Analysis().DataChanged, 0);
    }
    Record("x").ValidCount = 9;
    Analysis().DataChanged = 1;
    EXPECT_EQ(Caption(), "N Total: 3, Selected: 2");
}

/// Every table, with each allocation failing in turn: nothing kept, no message, and whole again with the next call.
TEST_F(ResultTableTest, FailedAllocationLeavesNothingBehind) {
    const struct {
        Result Operation;
        std::string Results;  ///< with the first, second, ... call for memory failing
    } cases[] = {
        // clang-format off
        {&CDrillDown::DDNSummary,     "001111111"},
        {&CDrillDown::DDNDescriptive, "1111111"},
        {&CDrillDown::RVSummary,      "1111111"},
        {&CDrillDown::DDNFrequency,   "0000000"},
        {&CDrillDown::RVFrequency,    "1000000000000000"},  // without a label: no descriptions
        // clang-format on
    };
    Choose({"x"}, {"y"});
    Review({"x"}, {"y"});
    Down("x", "one");
    for (const auto& each : cases) {
        Show(each.Operation);  // brings the counts up to date
        Host().FailAllocation(0);
        const std::string whole = Show(each.Operation);
        const std::size_t live = Host().LiveAllocations();
        std::string results;
        for (int call = 1; call <= Host().AllocationCalls(); ++call) {
            Host().FailAllocation(call);
            results += std::to_string((Analysis().*each.Operation)(nullptr));
            EXPECT_NE(Sheets(), whole) << "call " << call;
            EXPECT_EQ(Host().LiveAllocations(), live) << "call " << call;
            Host().FailAllocation(0);
            EXPECT_EQ(Show(each.Operation), whole) << "call " << call;
        }
        EXPECT_EQ(results, each.Results);
    }
    EXPECT_TRUE(TakeMessages().empty());
}

}  // namespace drilltest
