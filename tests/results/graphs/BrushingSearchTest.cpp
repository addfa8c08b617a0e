// The search for the brushing graph, with each question to the host failing in turn.

#include "tests/results/ResultsBench.h"
#include "tests/results/graphs/FaultyHost.h"

namespace drilltest {

class BrushingSearch : public ResultsBench {
  protected:
    /// A variable to be brushed, whose documents are kept in windows.
    void OpenInWindows() {
        Open({Numbers("x", {1, 2})});
        Choose({"x"});
        Analysis().SetCurrentDown(1);
        Kept.clear();
        Host().Services.TakeDocument = [this](quillara::ResultDocument& shown) {
            Kept.push_back(CountedPointer<quillara::ResultDocument>::Share(&shown));
            shown.SetVisible(true);
        };
    }

    std::vector<CountedPointer<quillara::ResultDocument>> Kept;
};

TEST_F(BrushingSearch, EndsWithoutAGraphWhereTheHostDoesNotAnswer) {
    static constexpr auto find = [](CDrillDown& a) {
        COutDocument* document = nullptr;
        return a.GetActiveChartInfo(&document) && document != nullptr ? 1 : 0;
    };
    const struct {
        const char* Name;
        int Placement;
        std::int32_t StandAlone;
        bool WithGraph;  ///< the brushing graph is there, else a histogram
        int (*Search)(CDrillDown&);
        const char* Results;  ///< with the first, second, ... question failing, and with none
    } cases[] = {
        // clang-format off
        // the application, the analysis, its outputs, their number, an item, its title; the plot may be refused
        {"draw",          1, 0, false, [](CDrillDown& a) { return int{a.DDNGraphForBrushing(nullptr)}; }, "00000011"},
        // ... their number, the table, the graph, its title
        {"close",         1, 0, true,  [](CDrillDown& a) { return int{a.DDNCloseBrushing(nullptr)}; },    "00000001"},
        // the application, the placement; the active item; analysis, outputs, number, item
        {"active item",   1, 0, true,  find, "00000001"},
        // ... the placement; graphs, number, item, title; analysis, outputs, number, two items; the document
        {"in windows",    0, 0, true,  find, "0000000000001"},
        {"none of them",  0, 0, false, find, "000000000001"},  // the active item in its place
        {"stands alone",  1, 1, true,  find, "000000000001"},
        {"takes another", 1, 1, false, find, "000000000001"},  // the item looked at last
        // clang-format on
    };
    for (const auto& each : cases) {
        OpenInWindows();
        FaultyHost::Placement = each.Placement;
        FaultyHost::FailingQuestion = 0;
        each.WithGraph ? Analysis().DDNGraphForBrushing(nullptr) : Analysis().DDNHistograms(nullptr);
        Analysis().DDNFrequency(nullptr);
        Analysis().StandAloneResults = each.StandAlone;
        std::string results;
        do {
            ++FaultyHost::FailingQuestion;
            FaultyHost::Questions = 0;
            results += std::to_string(each.Search(Analysis()));
        } while (FaultyHost::Questions >= FaultyHost::FailingQuestion);
        EXPECT_EQ(results, each.Results) << each.Name;
        Analysis().StandAloneResults = 0;
    }
    FaultyHost::FailingQuestion = 0;
}

TEST_F(BrushingSearch, TakesAnOlderGraphAndOneOfAnotherAnalysis) {
    COutDocument* document = nullptr;
    OpenInWindows();
    EXPECT_EQ(Analysis().DDNGraphForBrushing(nullptr), 1);
    EXPECT_TRUE(Kept.at(0)->IsBrushable());
    Kept[0]->SetBrushable(false);
    Analysis().SetCurrentDown(-1);
    EXPECT_EQ(Analysis().DDNGraphForBrushing(nullptr), 1);
    EXPECT_TRUE(Kept.at(0)->IsBrushable()) << "nothing was drawn";
    DrillBench other(Road::Columns);
    other.Open({Numbers("x", {1, 2})});
    other.Analysis().StandAloneResults = 1;
    EXPECT_TRUE(other.Analysis().GetActiveChartInfo(&document));
    other.Analysis().StandAloneResults = 0;
}

}  // namespace drilltest
