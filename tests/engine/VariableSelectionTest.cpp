// Choosing drill and review variables.

#include "tests/engine/DrillBench.h"

namespace drilltest {

class VariableSelection : public DrillTest {
  protected:
    void SetUp() override {
        Open({Numbers("a", {1, 1, 2}), Numbers("b", {1, 2, 3}), Numbers("c", {4, 5, 6}), Numbers("d", {7, 8, 9})});
    }
};
ON_EVERY_ROAD(VariableSelection);

TEST_P(VariableSelection, CutsTheSecondHistogramListToTheLengthOfTheFirst) {
    using List = std::vector<std::int16_t>;
    struct Case {
        List First, Second;
        VariableLists Reviewed;
        List FirstKept, SecondKept;
    };
    const Case cases[] = {
        {{1, 2}, {3, 4}, {{1, 2}, {3, 4}}, {1, 2}, {3, 4}},
        {{1, 2}, {3, 4}, {{1, 3}, {4}}, {1}, {3}},
        {{1}, {2, 3, 4}, {{1, 2}, {3, 4}}, {1}, {2}},
        {{1}, {2, 3}, {{1, 3}, {}}, {1}, {}},
        {{1, 2, 3}, {4}, {{1, 2}, {3, 4}}, {1, 2, 3}, {4}},
        {{1}, {1}, {{1}, {1}}, {1, 1}, {1, 1}},  // as often as it stands among the review variables
    };
    CDrillDown& analysis = Analysis();
    for (const Case& each : cases) {
        analysis.FirstVarCount = static_cast<std::int16_t>(each.First.size());
        analysis.SecondVarCount = static_cast<std::int16_t>(each.Second.size());
        std::copy(each.First.begin(), each.First.end(), analysis.FirstVarList);
        std::copy(each.Second.begin(), each.Second.end(), analysis.SecondVarList);
        ReviewLists(each.Reviewed);
        EXPECT_EQ(List(analysis.FirstVarList, analysis.FirstVarList + analysis.FirstVarCount), each.FirstKept);
        EXPECT_EQ(List(analysis.SecondVarList, analysis.SecondVarList + analysis.SecondVarCount), each.SecondKept);
    }
}

}  // namespace drilltest
