#include "tests/results/ResultsBench.h"

namespace drilltest {

class SelectionTextTest : public ResultsBench {
  protected:
    void SetUp() override {
        Open({Numbers("x", {1, 2, NA, 2}), Numbers("y", {1, 2, 3, 4}), Numbers("a longer name", {1, 1, 2, 2})});
        Choose({"x", "y", "a longer name"});
    }

    /// A step on a variable that has the first `size` of three categories.
    void Step(std::int32_t method, int size, int chosen, double max = 9, const std::string& name = "x") {
        const Categories all[]{
            {1, 1, 1e-7, "low", -1.5}, {1, 1, 2.1234567, "mid", 1e-7}, {1, 1, 1e20, "high", 2.1234567}};
        Drill step(Number(name), 1, static_cast<std::int16_t>(-Analysis().GetDrillUpsSize()), name);
        step.Method = method;
        step.Max = max;
        step.ChosenCategory = chosen;
        step.CategorySet.insert(all, all + size);
        Analysis().DrillUps->insert(step);
    }
};

TEST_F(SelectionTextTest, ClausesFollowTheMethodAndThePlace) {
    const struct {
        std::int32_t FirstMethod, LastMethod;
        int Size, Chosen;
        double Max;  // Min is 0
        const char* Clause;
    } rows[] = {
        {0, 5, 3, 3, 9, "\nx = Missing"},
        {0, 5, 0, 0, 9, "\nx = Missing"},
        {0, 5, 3, 4, 9, ""},
        {0, 5, 3, -1, 9, ""},
        {6, 6, 3, 1, 9, ""},
        {6, 6, 3, 3, 9, ""},
        {0, 0, 3, 1, 9, "\nx = mid"},
        {4, 4, 3, 1, 9, "\nx = mid"},
        {1, 2, 3, 0, 9, "\n-1.5 < x <= 0"},
        {1, 2, 3, 2, 9, "\n2.123457 < x <= 100000000000000000000"},
        {1, 2, 3, 1, 0, "\nx = 2.123457"},
        {3, 3, 3, 0, 9, "\n-1.5 <= x < 0"},
        {3, 3, 3, 2, 9, "\nx >= 2.123457"},
        {3, 3, 1, 0, 9, "\nx >= -1.5"},
        {5, 5, 3, 0, 9, "x <= 0"},  // continues the line before
        {5, 5, 1, 0, 9, "x <= 0"},
        {5, 5, 3, 1, 9, "\n0 < x <= 2.123457"},
        {5, 5, 3, 2, 9, "\nx > 2.123457"},
    };
    for (const auto& row : rows) {
        for (std::int32_t method = row.FirstMethod; method <= row.LastMethod; ++method) {
            Analysis().DrillUps->clear();
            Step(method, row.Size, row.Chosen, row.Max);
            EXPECT_EQ(Caption(), std::string("N Total: 4, Selected: 3") + row.Clause) << "method " << method;
        }
    }
}

TEST_F(SelectionTextTest, NewestStepIsFirstAndNamesAreRawInTheOneCaptionAndWholeInTheOther) {
    Step(0, 3, 1);
    Step(5, 3, 0, 9, "y");
    Step(0, 3, 1, 9, "a longer name");
    EXPECT_EQ(Caption(), "N Total: 4, Selected: 3\n" + LongTextKey("a longer name") + " = midy <= 0\nx = mid");
    EXPECT_EQ(LongTextOf(Analysis().ScatterDrillString()),
              "N Total: 4, Selected: 3\na longer name = midy <= 0\nx = mid");
}

}  // namespace drilltest
