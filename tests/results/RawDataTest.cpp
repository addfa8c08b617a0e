// The remaining cases as a new table of the host, against a plain reading of the steps, and as a sheet.

#include <algorithm>
#include <memory>

#include "tests/engine/RandomTables.h"
#include "tests/results/RecordedCalls.h"
#include "tests/results/ResultsBench.h"

namespace drilltest {

namespace {

/// Whether a step keeps a value, told by its category and method.
bool Keeps(const Drill& step, const quillara::Variable& variable, double x) {
    if (step.ChosenCategory == static_cast<std::int32_t>(step.CategorySet.size())) {
        return variable.IsMissing(x);
    }
    const Categories& kept = *std::next(step.CategorySet.begin(), step.ChosenCategory);
    switch (step.Method) {
        case DistinctValues:
        case IntegerCategories:
            return x == kept.Upper;
        case StepIntervals:
            return !(x >= kept.Upper || x < kept.Lower);
        default:
            return !(x > kept.Upper || x <= kept.Lower);
    }
}

class RawData : public ResultsBench {
  protected:
    void Open(quillara::DataTable table) {
        Input = table;
        ResultsBench::Open(std::move(table));
        Host().Services.ProgressStarted = [this](std::string_view, std::int32_t) { ++Displays; };
        Host().Services.ProgressEnded = [this] { --Displays; };
    }
    /// Six cases, of which the steps below keep some.
    void OpenExample() {
        quillara::DataTable table =
            TableOf({Numbers("a", {1, 1, 2, 1, NA, 1}), Numbers("spare", {9, 9, 9, 9, 9, 9}),
                     Numbers("x", {10, 20, 30, NA, 50, 60}), Numbers("w", {1, 0, 1, 1, 1, 2.5})});
        table.Header = "The header";
        Open(std::move(table));
    }
    /// "a x: 1 10, 1 20", names of cases in front of the values; "nothing".
    std::string Save() {
        Taken = nullptr;
        const std::int16_t result = Analysis().DDNSaveData(nullptr);
        EXPECT_EQ(result, Taken != nullptr ? 1 : 0);
        EXPECT_EQ(Displays, 0) << "progress displays left";
        return Taken == nullptr ? "nothing" : TextOf(*Taken);
    }
    /// The same, by reading the input plainly.
    std::string Expected() {
        quillara::DataTable expected;
        for (std::size_t i = 0; i < Input.Variables.size(); ++i) {
            if (Analysis().SelectedVariable(static_cast<int>(i) + 1) != 0) {
                expected.Variables.push_back(Input.Variables[i]);
                expected.Variables.back().Values.clear();
            }
        }
        for (std::size_t row = 0; row < static_cast<std::size_t>(Input.Cases); ++row) {
            if (Remains(row)) {
                ++expected.Cases;
                for (quillara::Variable& variable : expected.Variables) {
                    variable.Values.push_back(Input.Variables[Input.IndexOf(variable.Name)].Values[row]);
                }
            }
        }
        return expected.Variables.empty() ? "nothing" : TextOf(expected);
    }
    bool Remains(std::size_t row) {
        const CDrillDown& a = Analysis();
        const auto variable = [&](int var) -> const quillara::Variable& {
            return Input.Variables[static_cast<std::size_t>(var - 1)];
        };
        const auto missing = [&](int var) { return variable(var).IsMissing(variable(var).Values[row]); };
        const bool deleted =
            a.CasewiseDeletionOfMD == 1 && (std::any_of(a.Categorical, a.Categorical + a.NoCategorical, missing) ||
                                            std::any_of(a.Continuous, a.Continuous + a.NoContinuous, missing));
        return !deleted && std::all_of(a.DrillUps->begin(), a.DrillUps->end(), [&](const Drill& step) {
            return Keeps(step, variable(step.VarNo), variable(step.VarNo).Values[row]);
        });
    }
    quillara::DataTable Input;
    int Displays = 0;
};

TEST_F(RawData, HoldsCasesOfNoWeightButNotThoseOutsideTheSelection) {
    OpenExample();
    Weigh("w");
    Choose({"a"});
    Down("a", "1");
    EXPECT_EQ(Analysis().GetValidVar(), 3);
    EXPECT_EQ(Save(), "a: 1, 1, 1, 1");
    using enum CaseResult;
    Host().SetSelection({Use, Skip, Use, Use, Use, Skip});
    EXPECT_EQ(Save(), "a: 1, 1");
}

TEST_F(RawData, IsWrittenAsTheHostReadsItAndTestedAsItIsStored) {
    OpenExample();
    Choose({"a"}, {"x"});
    Down("a", "2");
    ShiftDataReads(100);
    EXPECT_EQ(Save(), "a x: 102 130");
    ShiftDataReads(0);
}

TEST_F(RawData, TakesCaseNamesAlong) {
    for (const std::size_t bytes : {150, 218, 219, 300}) {
        const std::string longName(bytes, 'n');
        quillara::DataTable table = TableOf({Numbers("a", {1, 2, 3})});
        table.CaseNames = {"first", longName, ""};
        Open(table);
        Choose({"a"});
        EXPECT_EQ(Save(), "a: 'first' 1, '" + longName + "' 2, '' 3");
    }
}

TEST_F(RawData, OfNoCasesIsRefused) {
    OpenExample();
    Choose({"a"});
    Host().SetSelection(std::vector<CaseResult>(6, CaseResult::Skip));
    Analysis().DataChanged = 1;
    EXPECT_EQ(Save(), "nothing");
    EXPECT_EQ(TakeMessages(), Names{"The number of cases is zero."});
    EXPECT_EQ(Analysis().DataChanged, 0);
    Choose({});
    Analysis().ValidVar = 6;
    EXPECT_EQ(Save(), "nothing") << "without variables";
    EXPECT_EQ(TakeMessages(), Names{});
}

TEST_F(RawData, OfRandomExplorationsIsThatOfThePlainReading) {
    for (std::uint64_t seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        Open(RandomTable(random, TableStyle::Anything, static_cast<std::int32_t>(Pick(random, 60))));
        Weigh("weight");
        ChooseLists(RandomLists(random, Input.Variables.size()));
        ReviewLists(RandomLists(random, Input.Variables.size()));
        Analysis().SetMD(static_cast<std::int16_t>(Pick(random, 2)));
        for (std::size_t steps = Pick(random, 3); steps > 0 && !Analysis().DrillDowns->empty(); --steps) {
            Drill& record = Editable(*Analysis().DrillDowns->begin());
            CategorizeAnyhow(random, record, ValuesOf(record.VarNo));
            Focus(record.VarNo);
            Take(static_cast<int>(Pick(random, static_cast<std::size_t>(Rows(record)) + 1)));
        }
        Analysis().ValidVar = 1;
        EXPECT_EQ(Save(), Expected());
    }
}

/// An export, in the two forms.
struct Export {
    const char* Name;
    std::int16_t (CDrillDown::*Run)(HWND);
};

class RawDataFailures : public RawData, public testing::WithParamInterface<Export> {
  protected:
    void SetUp() override {
        OpenExample();
        Choose({"a"}, {"x"});
        Down("a", "1");
        Live = Host().LiveAllocations();
    }
    std::int16_t Run() {
        Taken = nullptr;
        TakeShown();
        return (Analysis().*GetParam().Run)(nullptr);
    }
    void ExpectNothingLeft() {
        EXPECT_EQ(Taken, nullptr);
        EXPECT_EQ(Shown, "");
        EXPECT_EQ(Displays, 0);
        EXPECT_EQ(Host().LiveAllocations(), Live);
    }

    std::size_t Live = 0;
};
INSTANTIATE_TEST_SUITE_P(Forms, RawDataFailures,
                         testing::Values(Export{"Table", &CDrillDown::DDNSaveData},
                                         Export{"Sheet", &CDrillDown::DDNDatasheet}),
                         [](const auto& form) { return form.param.Name; });

TEST_P(RawDataFailures, ACancelAtAnyCaseLeavesNothing) {
    for (int poll = 1; poll <= Analysis().Table.Cases; ++poll) {
        CancelAt(poll);
        EXPECT_EQ(Run(), 0);
        EXPECT_EQ(Polls(), poll);
        ExpectNothingLeft();
    }
    CancelAt(Analysis().Table.Cases + 1);
    EXPECT_EQ(Run(), 1);
    EXPECT_EQ(TakeMessages(), Names{});
}

TEST_P(RawDataFailures, MissingMemoryAtAnyCallLeavesNothing) {
    for (int call = 1;; ++call) {
        Host().FailAllocation(call);
        const std::int16_t result = Run();
        if (Host().AllocationCalls() < call) {
            EXPECT_EQ(result, 1);
            EXPECT_GT(call, 8);
            break;
        }
        ExpectNothingLeft();
        const Names messages = TakeMessages();
        EXPECT_TRUE(messages.empty() || messages == Names{NotEnoughMemory});
        EXPECT_EQ(result, 0) << call;
    }
}

}  // namespace

}  // namespace drilltest
