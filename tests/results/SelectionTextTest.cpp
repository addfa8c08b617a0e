#include "tests/results/ResultsBench.h"

namespace drilltest {

class SelectionText : public ResultsBench {};

TEST_F(SelectionText, ClausesFollowTheMethodAndThePlace) {
    const struct {
        std::int32_t FirstMethod, LastMethod;
        int Size, Chosen;  // of three categories, the first ones
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
    const Categories all[]{{1, 1, 1e-7, "low", -1.5}, {1, 1, 2.1234567, "mid", 1e-7}, {1, 1, 1e20, "high", 2.1234567}};
    Open({Numbers("x", {1, 2, NA, 2})});
    Choose({"x"});
    for (const auto& row : rows) {
        for (std::int32_t method = row.FirstMethod; method <= row.LastMethod; ++method) {
            Drill step(1, 1, 0, "x");
            step.Method = method;
            step.Max = row.Max;
            step.ChosenCategory = row.Chosen;
            step.CategorySet.insert(all, all + row.Size);
            Analysis().DrillUps->clear();
            Analysis().DrillUps->insert(step);
            EXPECT_EQ(Caption(), std::string("N Total: 4, Selected: 3") + row.Clause) << "method " << method;
        }
    }
}

}  // namespace drilltest
