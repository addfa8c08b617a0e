#include "workbench/hosting/AnalysisDocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/workbench/hosting/TestAnalysis.h"
#include "workbench/data/Errors.h"
#include "workbench/hosting/AnalysisModule.h"
#include "workbench/hosting/LongTexts.h"

namespace quillara {
namespace {

using testing::ElementsAre;

DataTable SmallTable() {
    DataTable table = TableOf({Numbers("age", {1, 2}), Texts("marital status", {"Divorced", "Never-married"}),
                               Numbers("day", {0, 1}, ValueKind::Date), Numbers("code", {20230107, 20230111})});
    table.Variables[3].MissingCode = 20230111;
    for (const auto& [code, label] :
         std::map<int, const char*>{{3, "three"}, {4, "four"}, {8, "eight"}, {10, "ten"}, {12, "twelve"}}) {
        table.Variables[3].Labels[20230100 + code].Label = label;
    }
    table.Header = std::string(79, 'h') + "\xC3\x9F";
    table.CaseNames = {"first", "the second case"};
    table.Variables[0].LongName = std::string(126, 'n') + "\xC3\x9F";
    table.Variables[0].MissingCode = -99999;
    table.Variables[0].Labels = {{1, {"one", "short"}}, {2.1, {"two and a tenth", ""}}, {16777217, {"large", ""}}};
    table.Variables[0].Labels[3] = {"", "a description only"};
    return table;
}

struct Document : testing::Test {
    const DataTable Table = SmallTable();
    std::vector<std::string> Notes;
    std::optional<TestHost> Host{Table};
    TestAnalysis& Analysis = *Host->Analysis;
};

TEST_F(Document, RunsTheStepsInTheirOrderAndCloses) {
    Analysis.Notes = &Notes;
    EXPECT_TRUE(Host->Document.RunSequence());
    Analysis.WorkResult = 0;
    EXPECT_FALSE(Host->Document.RunSequence());
    Analysis.Forbidden = 7;
    EXPECT_TRUE(Host->Document.RunSequence());
    Analysis.AllocMem(&Analysis.Block, 10);
    Host.reset();
    EXPECT_THAT(Notes, ElementsAre("bound", "worked", "finished",  // the whole sequence
                                   "bound", "worked",  // one with a step that fails
                                   "bound",  // one that may not go on
                                   "closing", "destroyed"));
}

TEST_F(Document, KeepsTheCommonsUpToDate) {
    TestHost other(Table);
    Host->Document.RunSequence();
    other.Document.RunSequence();
    EXPECT_EQ(Analysis.Table.Variables, 4);
    EXPECT_EQ(Analysis.Table.Cases, 2);
    EXPECT_EQ(std::string(Analysis.Table.HeaderText, 80), std::string(79, 'h') + '\0');
    EXPECT_EQ(Analysis.Names.CaseNameWidth, 15);
    EXPECT_EQ(Analysis.Weight.Active, 0);
    Host->Document.SetWeight(0);
    EXPECT_EQ(Analysis.Weight.Active, 1);
    EXPECT_EQ(other.Analysis->Weight.Active, 0);
    Host->Document.SetWeight(std::nullopt);
    EXPECT_EQ(Analysis.Weight.Active, 0);
}

TEST_F(Document, CountsAndFailsAllocations) {
    void* blocks[3];
    Host->Document.FailAllocation(2);
    EXPECT_EQ(Analysis.AllocMem(&blocks[0], 100), 0);
    EXPECT_NE(Analysis.AllocMem(&blocks[1], 100), 0);
    EXPECT_EQ(Analysis.AllocMem(&blocks[2], 0), 0);
    EXPECT_EQ(blocks[1], nullptr);
    EXPECT_EQ(static_cast<char*>(blocks[0])[99], 0);
    EXPECT_EQ(Host->Document.AllocationCalls(), 3);
    EXPECT_EQ(Host->Document.LiveAllocations(), 2U);
    Analysis.FreeMem(blocks[0]);
    Analysis.FreeMem(blocks[2]);
    EXPECT_EQ(Host->Document.LiveAllocations(), 0U);
}

TEST_F(Document, AScriptThatFailsInAWindowCancelsItAndIsHeardOfLater) {
    short lists[2][3] = {};
    short counts[2] = {-1, -1};
    Host->Document.Services.WorkIn = [&](Window&) -> bool { throw DataError("no"); };
    EXPECT_EQ(Analysis.DoubleVarListDialog(nullptr, 1, "Title", nullptr, 0, 3, 0, 3, 3, lists[0], &counts[0], lists[1],
                                           &counts[1], "A", "B", 2, nullptr, 0, 0),
              0);
    EXPECT_THROW(Host->Document.RunMessages(), DataError);
    EXPECT_NO_THROW(Host->Document.RunMessages());
}

TEST(UnboundAnalysis, IsQuiet) {
    TestAnalysis analysis;
    ASSERT_EQ(analysis.AllocMem(&analysis.Block, 8), 0);
    EXPECT_EQ(analysis.InitializeAfterFileChanged(), 1);
    EXPECT_EQ(analysis.GetCaseBlocks(), nullptr);
    EXPECT_EQ(analysis.lookbr(), 0);
    analysis.d_pbar("text");
    analysis.dstart(10);
    analysis.dstop();
    analysis.dsplst(0, "message");
    char name[9] = "?";
    analysis.getvn5(1, name);
    EXPECT_STREQ(name, "");
    EXPECT_EQ(analysis.cstrtw(1, nullptr, nullptr, nullptr, nullptr), 2);
}

/// What the host writes for the analysis; "none" where it says that there is nothing.
struct Names : Document {
    template <typename Call>
    static std::string Text(const Call& call) {
        char text[128] = "????????";
        return call(text) ? text : "none";
    }
    std::string ShortName(int variable) {
        return Text([&](char* text) { return Analysis.getvn5(variable, text), true; });
    }
    std::string LongName(int variable) {
        return Text([&](char* text) { return Analysis.WriteVarLongName(text, variable), true; });
    }
    std::string Label(int variable, float value) {
        return Text([&](char* text) { return Analysis.vvlcod(0, variable, text, &value) == 0; });
    }
    std::string Description(int index, double value) {
        return Text([&](char* text) { return Analysis.RetrieveLongTextLabelAsHashedString(text, index, value) != 0; });
    }
    std::string Special(double value, int width = 8) {
        return Text([&](char* text) { return Analysis.WriteSpecialFormatVariable(3, value, text, width), true; });
    }
};

TEST_F(Names, VariablesHaveShortAndLongNames) {
    EXPECT_EQ(ShortName(1), "age");
    EXPECT_EQ(ShortName(2), LongTextKey("marital status"));
    EXPECT_EQ(LongName(1), std::string(126, 'n'));
    EXPECT_EQ(LongName(2), "");
    for (const int variable : {-1, 0, 5, 40000}) {
        EXPECT_EQ(ShortName(variable), "");
        EXPECT_EQ(Analysis.IsSpecialFormatVariable(variable), 0);
        EXPECT_EQ(Label(variable, 1), "none");
    }
    double code = 0;
    Analysis.getmd5(1, &code);
    EXPECT_EQ(code, -99999);
    EXPECT_EQ(Analysis.GetCaseName(1), "the second case");
    EXPECT_EQ(Analysis.GetCaseName(2), "");
}

TEST_F(Names, LabelsAreFoundBySinglePrecisionWhereItTellsValuesApart) {
    EXPECT_EQ(Label(1, 1), "one     ");
    EXPECT_EQ(Label(1, 2.1F), LongTextKey("two and a tenth"));
    EXPECT_EQ(Label(1, 16777216.0F), "large   ");
    EXPECT_EQ(Label(1, 3) + Label(1, 4) + Label(2, 3), "nonenonenone");
    // 3 and 4 become one, 8 and the 7 of a case too; 10 stands alone, 12 beside the missing code only.
    for (const auto& [code, label] : std::map<double, std::string>{
             {3, "none"}, {4, "none"}, {7, "none"}, {8, "none"}, {10, "ten     "}, {12, "twelve  "}}) {
        EXPECT_EQ(Label(4, static_cast<float>(20230100 + code)), label) << code;
    }
    EXPECT_EQ(Label(2, 1), "Divorced");
    EXPECT_EQ(Label(2, 2), LongTextKey("Never-married"));
}

TEST_F(Names, DescriptionsCountTheirVariableFromZero) {
    EXPECT_EQ(Description(0, 1), "short");
    EXPECT_EQ(Description(0, 3), LongTextKey("a description only"));
    EXPECT_EQ(Description(0, 2.1) + Description(1, 1) + Description(4, 1), "nonenonenone");
}

TEST_F(Names, DatesAreWrittenInTheirFormat) {
    EXPECT_EQ(Analysis.IsSpecialFormatVariable(1), 0);
    EXPECT_NE(Analysis.IsSpecialFormatVariable(3), 0);
    EXPECT_EQ(Special(0), "19700101");
    EXPECT_EQ(Special(1e7), "10000000");  // beyond the year 9999
    EXPECT_EQ(Special(1e300), "1e300");
    EXPECT_EQ(Special(Infinity), "--");
    EXPECT_EQ(Special(0, 4), "0");
}

TEST(Module, ALibraryThatIsNoModuleIsRefused) {
    EXPECT_THROW(AnalysisModule("/nowhere/libnothing.so"), DataError);
    EXPECT_THROW(AnalysisModule("libm.so.6"), DataError);
}

}  // namespace
}  // namespace quillara
