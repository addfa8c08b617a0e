// The calls by which results are handed over, with every argument, for one result of each kind.

#include <gmock/gmock.h>

#include "tests/engine/DrillBench.h"
#include "tests/results/RecordedCalls.h"

namespace drilltest {

class HostCalls : public testing::Test, public DrillBench {
  protected:
    HostCalls() : DrillBench(Road::Columns) {}
};

TEST_F(HostCalls, OfResultsHaveTheseArguments) {
    const struct {
        const char* Name;
        int (*Operate)(CDrillDown&);
        const char* Calls;
    } cases[] = {
        // clang-format off
        {"frequencies", [](CDrillDown& a) { return int{a.DDNFrequency(nullptr)}; },
         R"(looka4 [2 1 1 2 3 4 50 25 25 50 75 100] ',,,,,,,,,,,' [-8 -8 0 0] 'Count,Cumulative
Count,Percent(%),Cumulative
Percent(%)' ',,,' '1,3,Missing' 'Frequency table of g: A group,N Total: 4, Selected: 3,'
 3 4 3 4 16 6 14 10 80 1 0 12 8 8 9217 0 null null [3 4] 0 1 1
)"},
        {"histogram", [](CDrillDown& a) { return int{a.DDNHistograms(nullptr)}; },
         R"(Chart 5 130 1 [1 2 3 2 1 1] [3] [5] [0] [0] [12] '' [0.9]
12: 'Histogram of drill-down variable: g: A group,N Total: 4, Selected: 3,' 62 3 'g' 1 1 'Number of counts' 16 1 0 5 1 0 4 1
27: ',1,3,Missing' 20 [0 1 2 3] 4 null 0 null 0 '0,1,2,3,4,5' 20 [0 1 2 3 4 5] 6 null 0 null -1
43: 8 0 0 8 0 0 8 0 0 '' 0 [0] 0 12 ',,'
)"},
        {"brushing", [](CDrillDown& a) { return int{a.DDNGraphForBrushing(nullptr)}; },
         R"(Chart 5 138 1 [1 2 3 2 1 1] [3] [5] [0] [0] [12] '' [0.9]
12: 'Histogram for brushing: g,N Total: 4, Selected: 3,' 62 3 'g' 1 1 'Number of counts' 16 1 0 5 1 0 4 1
27: ',1,3,Missing' 20 [0 1 2 3] 4 null 0 null 0 '0,1,2,3,4,5' 20 [0 1 2 3 4 5] 6 null 0 null -1
43: 8 0 0 8 0 0 8 0 0 '' 0 [0] 0 12 ',,'
)"},
        {"pie", [](CDrillDown& a) { return a.DDNPiecharts(0, nullptr); },
         R"(Chart 3 2 1 [1 2 3 0 2 1 1 0] [4] [10] [1] [0] [1] null [0.9]
12: 'Pie chart for drill-down variable: g: A group,N Total: 4, Selected: 3,' 62 3 'g' 1 1 '' 0 1 0 100 20 0 4 1
27: null 0 null 0 null 0 null 0 null 0 null 0 null 0 null -1
43: 8 0 0 0 0 0 0 0 0 '' 0 [192] 1 12 '1,3,Missing,'
)"},
        {"stacked", [](CDrillDown& a) { return a.DDNStackedplots(0, nullptr); },
         R"(Chart 2 0 4 [1 100] [1 75] [1 50] [1 0] [1 1 1 1] [5 5 5 5] [0 0 0 0] [0 0 0 0] [10 9 11 12] null [0.9 0.9 0.9 0.9]
12: 'Stacked bar plot for drill-down variables,N Total: 4, Selected: 3,' 62 3 '' 0 1 'Relative number of cases(%)' 27 1 0 100.1 20 0 2 1
27: ',g' 20 [0 1] 2 null 0 null 0 null 0 null 0 null 0 null -1
43: 8 0 0 0 0 0 0 0 0 '' 0 [384 384 384 384] 0 0 ''
)"},
        {"descriptives", [](CDrillDown& a) { return int{a.RVSummary(nullptr)}; },
         R"(looka4 [1.875 0.25 1.5 2 4 0] ',,,,,' [0 0 0 -8 -8 -8] 'Mean          ,Std.Dev.              ,Minimum       ,Maximum       ,Cases  ,Missing' ',,,,,' 'pay in euro' 'Descriptive statistics,N Total: 4, Selected: 3,'
 1 6 1 6 16 6 14 10 80 1 0 12 8 8 9217 0 null null [1 6] 0 1 1
)"},
        {"sheet", [](CDrillDown& a) { return int{a.DDNDatasheet(nullptr)}; },
         R"(looka4 [0 0 0 0 1 1 3 -9999] ',,,,,,,' [0 0] '1,2' 'g,pay in e' ',,,' 'Spreadsheet after drill down,,'
 4 2 4 2 16 6 14 10 80 1 0 12 8 8 9217 0 null null [4 2] 0 1 1
)"},
        {"table", [](CDrillDown& a) { return int{a.DDNSaveData(nullptr)}; },
         R"(SubsetAndAddEx 25 '' 2 0 [1 2] 4 'g,pay in euro' 'A group,' 128 'The header' 12 0 [0] [0] 1
MatClo 1
)"},
        // clang-format on
    };
    quillara::Variable group = Numbers("g", {1, 1, 3, NA});
    group.LongName = "A group";
    quillara::DataTable table = TableOf({group, Numbers("pay in euro", {1.5, 2, 2, 2})});
    table.Header = "The header";
    table.CaseNames = {"case 1", "", "", "case 4"};
    Open(table);
    Choose({"g"});
    Review({}, {"pay in euro"});
    Analysis().SetCurrentDown(1);
    for (const auto& each : cases) {
        TakeCalls();
        EXPECT_EQ(each.Operate(Analysis()), 1);
        EXPECT_EQ(TakeCalls(), each.Calls) << each.Name;
    }
}

TEST_F(HostCalls, OfNewTablesNameEveryCategoricalColumnOrNone) {
    const struct {
        Names Categorical, Continuous, Reviewed;
        const char* Call;
    } cases[] = {
        {{"c"}, {"c"}, {}, "2 0 [3 0] 1 'c,' ',' 128 '' 0 0 [0] [2] 1\n"},  // counted twice, listed once
        {{}, {"b"}, {}, "1 0 [2] 1 'b' '' 128 '' 0 0\n"},
        {{}, {"b"}, {"b"}, "1 0 [2] 1 'b' '' 128 '' 0 0\n"},  // none was counted
        {{"c"}, {"b"}, {"b", "a"}, "3 0 [1 2 3] 1 'a,b,c' ',,' 128 '' 0 0 [0 1 2] [0 1 2] 3\n"},
    };
    Open({Numbers("a", {1, 2}), Numbers("b", {1, 2}), Numbers("c", {1, 0})});
    Weigh("c");  // one case enters the pass, both are written
    for (const auto& each : cases) {
        Choose(each.Categorical, each.Continuous);
        Review(each.Reviewed);
        TakeCalls();
        EXPECT_EQ(Analysis().DDNSaveData(nullptr), 1);
        const std::string calls = TakeCalls();
        EXPECT_EQ(calls.substr(0, calls.find("MatClo")), std::string("SubsetAndAddEx 25 '' ") + each.Call);
    }
}

TEST_F(HostCalls, ARefusedWriteDropsTheNewTableWithAMessage) {
    quillara::DataTable table = TableOf({Numbers("a", {1, 2})});
    table.CaseNames = {"first", "second"};
    Open(table);
    Choose({"a"});
    for (int write = 1; write <= 4; ++write) {  // names and values
        TakeCalls();
        RefuseWrite(write);
        EXPECT_EQ(Analysis().DDNSaveData(nullptr), 0);
        EXPECT_THAT(TakeCalls(), testing::MatchesRegex("SubsetAndAddEx .*\nAbortOutput [1-9]\n"));
        EXPECT_EQ(TakeMessages(), Names{NotEnoughMemory});
    }
    RefuseWrite(0);
    Analysis().ValidVar = 0;
    TakeCalls();
    EXPECT_EQ(Analysis().DDNSaveData(nullptr), 0);
    EXPECT_EQ(TakeCalls(), "dsplst 0\n");
}

TEST_F(HostCalls, OfResultsHaveTheCaptionWhole) {
    std::string caption = "N Total: 2, Selected: 2";
    std::vector<quillara::Variable> table{Numbers("b", {1, 2}), Numbers("c", {1, 2})};
    for (const char* name : {"x", "y", "z"}) {
        table.push_back(Numbers(name, {1, 1}));
        table.back().Labels[1] = {"a label that is rather long", ""};
    }
    Open(table);
    Choose({"b", "x", "y", "z"}, {"c"});
    Review({"b"}, {"b", "c"});
    for (const char* name : {"z", "y", "x"}) {
        Down(name, "a label that is rather long");
    }
    for (const char* name : {"x", "y", "z"}) {
        caption += std::string("\n") + name + " = a label that is rather long";
    }
    using Operation = std::int16_t (CDrillDown::*)(HWND);
    for (const Operation operation :
         {&CDrillDown::DDNDescriptive, &CDrillDown::RVSummary, &CDrillDown::DDNFrequency, &CDrillDown::RVFrequency,
          &CDrillDown::DDNHistograms, &CDrillDown::RVHistograms}) {
        TakeCalls();
        (Analysis().*operation)(nullptr);
        EXPECT_THAT(TakeCalls(), testing::HasSubstr(caption));
    }
    TakeCalls();
    EXPECT_EQ(Analysis().RVScatterPlot(nullptr), 1);
    EXPECT_EQ(TakeCalls(), "Scatterplots 204 Correlations\n" + caption + '\n') << "whole, and not as a key";
    for (const auto operation : {&CDrillDown::DDNPiecharts, &CDrillDown::RVPiecharts, &CDrillDown::DDNStackedplots,
                                 &CDrillDown::RVStackedplots}) {
        TakeCalls();
        (Analysis().*operation)(0, nullptr);
        EXPECT_THAT(TakeCalls(), testing::HasSubstr(caption));
    }
}

TEST_F(HostCalls, OfAScatterplotFailWithOneAlone) {
    Open({Numbers("x", {1, 2})});
    Choose({"x"});
    for (const short status : {0, 1, 2, -1}) {
        AnswerScatterplots(status);
        EXPECT_EQ(Analysis().RVScatterPlot(nullptr), status == 1 ? 0 : 1);
    }
    AnswerScatterplots(std::nullopt);
}

TEST_F(HostCalls, TellTheLengthOfAMessageOfGraphsAndNoneOfOthers) {
    Open({Numbers("x", {NA, NA})});
    Choose({"x"});
    Analysis().SetCountMD(0);
    TakeCalls();
    EXPECT_EQ(Analysis().DDNHistograms(nullptr), 1);
    EXPECT_EQ(TakeCalls(), "dsplst 19\n");
    Analysis().ValidVar = 0;
    Analysis().DDNDescriptive(nullptr);
    EXPECT_EQ(TakeCalls(), "dsplst 0\n");
}

}  // namespace drilltest
