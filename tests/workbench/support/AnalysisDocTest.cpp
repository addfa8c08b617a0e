#include "workbench/support/AnalysisDoc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/workbench/support/TestAnalysis.h"
#include "workbench/data/Errors.h"
#include "workbench/support/AnalysisModule.h"
#include "workbench/support/LongTexts.h"

using quillara::DataTable;
using quillara::LongTextKey;
using quillara::ValueKind;
using quillara::Variable;
using quillara::VariableLists;
using testing::ElementsAre;

namespace {

DataTable SmallTable() {
    DataTable table = TableOf({Numbers("age", {1, 2}), Numbers("marital status", {1, 2}), Numbers("day", {0, 1})});
    table.Header = std::string(79, 'h') + "\xC3\x9F";
    table.CaseNames = {"first", "the second"};
    table.Variables[0].LongName = std::string(126, 'n') + "\xC3\x9F";
    table.Variables[0].MissingCode = -99999;
    table.Variables[0].Labels = {{1, {"one", "short"}}, {2.1, {"two and a tenth", ""}}, {16777217, {"large", ""}}};
    table.Variables[0].Labels[3] = {"", "a description only"};
    table.Variables[1].Kind = ValueKind::Text;
    table.Variables[1].Texts = {"Divorced", "Never-married"};
    table.Variables[2].Kind = ValueKind::Date;
    return table;
}

TEST(AnalysisDoc, RunsTheStepsInTheirOrderAndCloses) {
    const DataTable table = SmallTable();
    std::vector<std::string> notes;
    {
        TestHost host(table);
        host.Analysis->Notes = &notes;
        EXPECT_TRUE(host.Document.RunSequence());
        EXPECT_EQ(&host.Document.Analysis(), host.Analysis);
        host.Analysis->AllocMem(&host.Analysis->Block, 10);
    }
    EXPECT_THAT(notes, ElementsAre("bound", "worked", "finished", "closing", "destroyed"));
}

TEST(AnalysisDoc, AFailedOrForbiddenStepEndsTheSequence) {
    const DataTable table = SmallTable();
    std::vector<std::string> notes;
    TestHost host(table);
    host.Analysis->Notes = &notes;
    host.Analysis->WorkResult = 0;
    EXPECT_FALSE(host.Document.RunSequence());
    host.Analysis->Forbidden = 7;
    EXPECT_TRUE(host.Document.RunSequence());
    EXPECT_THAT(notes, ElementsAre("bound", "worked", "bound"));
    host.Analysis->Notes = nullptr;
}

TEST(AnalysisDoc, KeepsTheCommonsUpToDate) {
    const DataTable table = SmallTable();
    TestHost host(table);
    TestHost other(table);
    host.Document.RunSequence();
    other.Document.RunSequence();
    EXPECT_EQ(host.Analysis->Table.Variables, 3);
    EXPECT_EQ(host.Analysis->Table.Cases, 2);
    EXPECT_EQ(std::string(host.Analysis->Table.HeaderText, 80), std::string(79, 'h') + '\0');
    EXPECT_EQ(host.Analysis->Names.CaseNameWidth, 10);
    EXPECT_EQ(host.Analysis->Weight.Active, 0);
    host.Document.SetWeight(0);
    EXPECT_EQ(host.Analysis->Weight.Active, 1);
    EXPECT_EQ(other.Analysis->Weight.Active, 0);
    host.Document.SetWeight(std::nullopt);
    EXPECT_EQ(host.Analysis->Weight.Active, 0);
}

TEST(AnalysisDoc, CountsAndFailsAllocations) {
    const DataTable table = SmallTable();
    TestHost host(table);
    void* blocks[3];
    host.Document.FailAllocation(2);
    EXPECT_EQ(host.Analysis->AllocMem(&blocks[0], 100), 0);
    EXPECT_NE(host.Analysis->AllocMem(&blocks[1], 100), 0);
    EXPECT_EQ(host.Analysis->AllocMem(&blocks[2], 0), 0);
    EXPECT_EQ(blocks[1], nullptr);
    EXPECT_EQ(static_cast<char*>(blocks[0])[99], 0);
    EXPECT_EQ(host.Document.AllocationCalls(), 3);
    EXPECT_EQ(host.Document.LiveAllocations(), 2U);
    host.Analysis->FreeMem(blocks[0]);
    host.Analysis->FreeMem(blocks[2]);
    EXPECT_EQ(host.Document.LiveAllocations(), 0U);
}

TEST(UnboundAnalysis, IsQuiet) {
    TestAnalysis analysis;
    void* block = nullptr;
    ASSERT_EQ(analysis.AllocMem(&block, 8), 0);
    analysis.FreeMem(block);
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

struct Names : testing::Test {
    std::string ShortName(int variable) {
        char name[9];
        Host.Analysis->getvn5(variable, name);
        return name;
    }
    std::string Label(int variable, float value) {
        char text[9] = "????????";
        return Host.Analysis->vvlcod(0, variable, text, &value) == 0 ? text : "none";
    }
    std::string Description(int index, double value) {
        char text[9] = "";
        const int found = Host.Analysis->RetrieveLongTextLabelAsHashedString(text, index, value);
        EXPECT_EQ(found != 0, text[0] != '\0');
        return text;
    }
    std::string Special(int variable, double value, int width = 8) {
        char text[9];
        Host.Analysis->WriteSpecialFormatVariable(variable, value, text, width);
        return text;
    }

    const DataTable Table = SmallTable();
    TestHost Host{Table};
};

TEST_F(Names, VariablesHaveShortAndLongNames) {
    EXPECT_EQ(ShortName(1), "age");
    EXPECT_EQ(ShortName(2), LongTextKey("marital status"));
    char longName[128];
    Host.Analysis->WriteVarLongName(longName, 1);
    EXPECT_EQ(longName, std::string(126, 'n'));
    Host.Analysis->WriteVarLongName(longName, 2);
    EXPECT_STREQ(longName, "");
    for (const int variable : {-1, 0, 4, 40000}) {
        EXPECT_EQ(ShortName(variable), "");
        EXPECT_EQ(Host.Analysis->IsSpecialFormatVariable(variable), 0);
        EXPECT_EQ(Label(variable, 1), "none");
    }
    double code = 0;
    Host.Analysis->getmd5(1, &code);
    EXPECT_EQ(code, -99999);
    EXPECT_EQ(Host.Analysis->GetCaseName(1), "the second");
    EXPECT_EQ(Host.Analysis->GetCaseName(2), "");
}

TEST_F(Names, LabelsAreFoundBySinglePrecision) {
    EXPECT_EQ(Label(1, 1), "one     ");
    EXPECT_EQ(Label(1, 2.1F), LongTextKey("two and a tenth"));
    EXPECT_EQ(Label(1, 16777216.0F), "large   ");
    EXPECT_EQ(Label(1, 3), "none");
    EXPECT_EQ(Label(1, 4), "none");
    EXPECT_EQ(Label(2, 1), "Divorced");
    EXPECT_EQ(Label(2, 2), LongTextKey("Never-married"));
    EXPECT_EQ(Label(2, 3), "none");
}

TEST_F(Names, DescriptionsCountTheirVariableFromZero) {
    EXPECT_EQ(Description(0, 1), "short");
    EXPECT_EQ(Description(0, 3), LongTextKey("a description only"));
    EXPECT_EQ(Description(0, 2.1), "");
    EXPECT_EQ(Description(1, 1), "");
    EXPECT_EQ(Description(3, 1), "");
}

TEST_F(Names, DatesAreWrittenInTheirFormat) {
    EXPECT_EQ(Host.Analysis->IsSpecialFormatVariable(1), 0);
    EXPECT_NE(Host.Analysis->IsSpecialFormatVariable(3), 0);
    EXPECT_EQ(Special(3, 0), "19700101");
    EXPECT_EQ(Special(3, 1e7), "10000000");  // beyond the year 9999
    EXPECT_EQ(Special(3, 1e300), "1e300");
    EXPECT_EQ(Special(3, std::numeric_limits<double>::infinity()), "--");
    EXPECT_EQ(Special(3, 0, 4), "0");
}

TEST(VariableDialog, TakesListsWithinTheLimits) {
    const DataTable table = SmallTable();
    TestHost host(table);
    std::optional<VariableLists> answer;
    std::string shown;
    std::string message;
    short lists[2][3] = {};
    short counts[2] = {-1, -1};
    const auto ask = [&](int lowest, int highest, int total) {
        return host.Analysis->DoubleVarListDialog(nullptr, 1, "Title", nullptr, lowest, highest, 0, 3, total, lists[0],
                                                  &counts[0], lists[1], &counts[1], "A", "B", 2, nullptr, 0, 0);
    };
    EXPECT_EQ(ask(0, 3, 3), 0);
    host.Document.Services.ChooseVariables = [&](const quillara::VariableListRequest& request) {
        shown = request.Title + request.Label1 + request.Label2;
        return answer;
    };
    host.Document.Services.ShowMessage = [&](std::string_view text) { message = text; };
    EXPECT_EQ(ask(0, 3, 3), 0);
    for (const VariableLists& refused : {VariableLists{{0}, {}}, {{4}, {}}, {{}, {1, 2, 3, 1}}, {{1, 2, 3}, {1}}}) {
        answer = refused;
        EXPECT_EQ(ask(0, 3, 3), 0);
        EXPECT_NE(message, "");
    }
    EXPECT_EQ(counts[0], -1);
    answer = VariableLists{{3, 1}, {2}};
    EXPECT_EQ(ask(3, 3, 3), 0);
    EXPECT_EQ(ask(0, 1, 3), 0);
    EXPECT_EQ(ask(0, 2, 3), 1);
    EXPECT_EQ(shown, "TitleAB");
    EXPECT_THAT(lists[0], ElementsAre(3, 1, 0));
    EXPECT_THAT(lists[1], ElementsAre(2, 0, 0));
    EXPECT_THAT(counts, ElementsAre(2, 1));
}

TEST(Module, ALibraryThatIsNoModuleIsRefused) {
    EXPECT_THROW(quillara::AnalysisModule("/nowhere/libnothing.so"), quillara::DataError);
    EXPECT_THROW(quillara::AnalysisModule("libm.so.6"), quillara::DataError);
}

}  // namespace
