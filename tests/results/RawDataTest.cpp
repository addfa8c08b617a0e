// The remaining cases as a new table of the host, against a plain reading of the steps, and as a sheet.

#include <algorithm>

#include "tests/engine/RandomTables.h"
#include "tests/results/ResultsBench.h"

namespace drilltest {

namespace {

/// Whether a step keeps a value, told by its category and method.
bool Keeps(const Drill& step, const quillara::Variable& variable, double x) {
    if (step.ChosenCategory == static_cast<std::int32_t>(step.CategorySet.size())) {
        return variable.IsMissing(x);
    }
    const Categories& kept = *std::next(step.CategorySet.begin(), step.ChosenCategory);
    if (step.Method == DistinctValues || step.Method == IntegerCategories) {
        return x == kept.Upper;
    }
    return step.Method == StepIntervals ? !(x >= kept.Upper || x < kept.Lower) : !(x > kept.Upper || x <= kept.Lower);
}

class RawData : public ResultsBench {
  protected:
    void Open(quillara::DataTable table) {
        Input = table;
        ResultsBench::Open(std::move(table));
        Host().Services.ProgressStarted = [this](std::string_view, std::int32_t) { ++Displays; };
        Host().Services.ProgressEnded = [this] { --Displays; };
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
        for (const quillara::Variable& variable : Input.Variables) {
            if (Analysis().SelectedVariable(Number(variable.Name)) != 0) {
                std::vector<double> values(variable.Values.begin(), variable.Values.end());
                std::size_t row = 0;
                std::erase_if(values, [&](double) { return !Remains(row++); });
                expected.Cases = static_cast<std::int32_t>(values.size());
                expected.Variables.emplace_back(variable).Values = std::move(values);
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

/// An export in either form, given up at any case or without memory at any call, leaves nothing behind.
TEST_F(RawData, LeavesNothingBehindWhenItFails) {
    Open(TableOf({Numbers("a", {1, 1, 2, 1, NA, 1}), Numbers("x", {10, 20, 30, NA, 50, 60})}));
    Choose({"a"}, {"x"});
    Down("a", "1");
    const std::size_t live = Host().LiveAllocations();
    for (const Result form : {&CDrillDown::DDNSaveData, &CDrillDown::DDNDatasheet}) {
        const auto fails = [&] {
            Taken = nullptr;
            const bool failed = (Analysis().*form)(nullptr) == 0;
            const bool left = Taken != nullptr || !TakeShown().empty() || Displays != 0;
            EXPECT_EQ(left, !failed);
            EXPECT_EQ(Host().LiveAllocations(), live);
            return failed;
        };
        for (int poll = 1; poll <= Input.Cases; ++poll) {
            CancelAt(poll);
            EXPECT_TRUE(fails());
            EXPECT_EQ(Polls(), poll);
        }
        CancelAt(Input.Cases + 1);
        EXPECT_FALSE(fails());
        EXPECT_EQ(TakeMessages(), Names{});
        int call = 1;
        for (Host().FailAllocation(call); fails(); Host().FailAllocation(++call)) {
            const Names messages = TakeMessages();
            EXPECT_TRUE(messages.empty() || messages == Names{NotEnoughMemory}) << call;
        }
        EXPECT_GT(call, 8);
        EXPECT_LT(Host().AllocationCalls(), call);
        Host().FailAllocation(0);
    }
}

}  // namespace

}  // namespace drilltest
