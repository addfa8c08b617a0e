#include "results/tables/ResultTable.h"

#include <cstring>

#include "tests/results/ResultsBench.h"

namespace quillara {
namespace {

class ResultTableTest : public ResultsBench {
  protected:
    void SetUp() override { Open({Numbers("x", {1, 2, NA}), Numbers("y", {1.5, 2, 3})}); }
};

std::string Field(const char* field, std::size_t width) {
    return {field, width};
}

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
    EXPECT_EQ(Field(table.Title[1], 80), std::string(80, 'x'));
    EXPECT_EQ(table.Title[2][0], '\0');
}

TEST_F(ResultTableTest, CellsWithoutNumberStayMarked) {
    ResultTable table(Analysis(), 2, 2);
    table.SetNumber(1, 0, 7);
    table.SetCellText(0, 0, "-");
    table.ShowWhole(1);
    EXPECT_EQ(table.Data[1], 7);
    EXPECT_EQ(Field(reinterpret_cast<const char*>(table.Data), 8), std::string(8, '\xFF'));
    EXPECT_EQ(static_cast<unsigned char>(table.ColFormat[0]), 156);
    EXPECT_EQ(table.ColFormat[1], -8);
}

TEST_F(ResultTableTest, PlacesOutsideArePassedOver) {
    ResultTable table(Analysis(), 1, 1);
    for (const int place : {-1, 1}) {
        table.SetNumber(place, 0, 1);
        table.SetCellText(0, place, "text");
        table.SetRowName(place, "row");
        table.SetColumnName(place, "column");
        table.ShowWhole(place);
    }
    table.SetTitle(3, "fourth");
    table.Output();
    table.Output();
    EXPECT_EQ(Sheets(), " | \n | \n");
}

TEST_F(ResultTableTest, RowNamesAreAsWideAsCaseNames) {
    Data.CaseNames = {std::string(20, 'a'), "b", "c"};
    SetUp();
    ResultTable table(Analysis(), 1, 1);
    table.SetRowName(0, std::string(20, 'r'));
    EXPECT_EQ(table.RowNameWidth, 20);
    EXPECT_EQ(Field(table.RowNames, 20), std::string(20, 'r'));
    table.Output();
    EXPECT_EQ(Sheets(), " | \n" + std::string(20, 'r') + " | \n");
}

TEST_F(ResultTableTest, SuppressedTableIsReleasedUnseen) {
    const std::size_t before = Document->LiveAllocations();
    ResultTable table(Analysis(), 1, 1);
    table.Suppress = 1;
    EXPECT_EQ(table.Output(), 1);
    EXPECT_EQ(Document->LiveAllocations(), before);
    EXPECT_EQ(Sheets(), "");
}

using Operation = std::int16_t (CDrillDown::*)(HWND);

TEST_F(ResultTableTest, ResultsBringTheRecordsUpToDateFirst) {
    Choose({"x"}, {"y"});
    Review({"x"}, {"y"});
    for (const Operation show :
         {&CDrillDown::DDNDescriptive, &CDrillDown::RVSummary, &CDrillDown::DDNFrequency, &CDrillDown::RVFrequency}) {
        (Analysis().*show)(nullptr);
        const std::string fresh = Sheets();
        for (CDrillDown::DrillSet* set : {Analysis().DrillDowns, Analysis().Reviews}) {
            Record(set, "y").MissingWeight = Record(set, "y").Mean = 9;
        }
        Analysis().ValidVar = 0;
        Analysis().DataChanged = 1;
        (Analysis().*show)(nullptr);
        EXPECT_EQ(Sheets(), fresh);
        EXPECT_EQ(Analysis().DataChanged, 0);
    }
    Record(Analysis().DrillDowns, "x").ValidCount = 9;
    Analysis().DataChanged = 1;
    EXPECT_EQ(LongTextOf(Analysis().DrillString()), "N Total: 3, Selected: 2");
}

/// Every table, with each allocation failing in turn: no crash, nothing kept, and whole again with the next call.
TEST_F(ResultTableTest, FailedAllocationLeavesNothingBehind) {
    Data.Variables[0].Labels[1] = {"one", "The first of the values"};
    Choose({"x"}, {"y"});
    Review({"x"}, {"y"});
    Drill("x", 0);
    for (const Operation show : {&CDrillDown::DDNSummary, &CDrillDown::DDNDescriptive, &CDrillDown::RVSummary,
                                 &CDrillDown::DDNFrequency, &CDrillDown::RVFrequency}) {
        (Analysis().*show)(nullptr);  // brings the counts up to date
        Sheets();
        Document->FailAllocation(0);
        (Analysis().*show)(nullptr);
        const std::string whole = Sheets();
        const int calls = Document->AllocationCalls();
        const std::size_t live = Document->LiveAllocations();
        for (int call = 1; call <= calls; ++call) {
            Document->FailAllocation(call);
            (Analysis().*show)(nullptr);
            EXPECT_EQ(Document->LiveAllocations(), live) << "call " << call;
            EXPECT_NE(Sheets(), whole) << "call " << call;
            Document->FailAllocation(0);
            (Analysis().*show)(nullptr);
            EXPECT_EQ(Sheets(), whole) << "call " << call;
        }
    }
    EXPECT_TRUE(Messages.empty());
}

}  // namespace
}  // namespace quillara
