#include "tests/results/graphs/GraphBench.h"
#include "workbench/dialogs/VariableListsDialog.h"

namespace drilltest {

class ReviewPlots : public GraphBench {
  protected:
    /// Runs a command: first title line and cases of each plot shown, then the result and the messages if they aren't 1
    /// and none.
    template <typename Command>
    std::string Plots(Command command) {
        const int result = Run(command);
        std::string text;
        for (const quillara::GraphDocument& graph : std::exchange(Shown, {})) {
            const bool isScatter = std::holds_alternative<quillara::ScatterMatrix>(graph.Content);
            text += graph.Title.front() + (isScatter ? '\n' + graph.Title.at(1) : "") + ": " + CasesOf(graph) + '\n';
        }
        for (const std::string& message : TakeMessages()) {
            text += message + '\n';
        }
        return text + (result == 1 ? "" : "gave " + std::to_string(result));
    }

    /// Lets the user pair these variables, by number.
    void Pair(std::vector<short> first, std::vector<short> second) {
        Host().Services.WorkIn = [first, second](quillara::Window& window) {
            if (!window.IsClosed()) {
                quillara::ChooseVariables(window, first, second);
            }
            return window.IsClosed();
        };
    }

  private:
    /// What a plot shows, and of how many cases: "type 52, 3 cases".
    static std::string CasesOf(const quillara::GraphDocument& graph) {
        if (const auto* box = std::get_if<quillara::BoxPlot>(&graph.Content)) {
            return "type " + std::to_string(static_cast<int>(box->Type)) + ", " +
                   std::to_string(box->Boxes.empty() ? 0 : box->Boxes.front().Cases) + " cases";
        }
        if (const auto* matrix = std::get_if<quillara::ScatterMatrix>(&graph.Content)) {
            return "flags " + std::to_string(matrix->Flags) + ", " +
                   std::to_string(matrix->Variables.empty() ? 0 : matrix->Variables.front().Cases) + " cases";
        }
        const auto& histogram = std::get<quillara::Histogram3DPlot>(graph.Content);
        return histogram.X.Variable + ' ' + histogram.Y.Variable + ", " + std::to_string(histogram.Cases) + " cases";
    }
};

TEST_F(ReviewPlots, BoxPlotsComeInTheOrderOfTheOptionsNotOfTheirCodes) {
    Open({Numbers("x", {1, 2, 3}), Numbers("y", {1, 2, 3})});
    Choose({"x"});
    Review({}, {"y"});
    CDrillDown& analysis = Analysis();
    const std::string title = "Box and Whisker Plot for Review Variables: type ";
    EXPECT_EQ(Plots(&CDrillDown::RVBoxWhiker), title + "54, 3 cases\n");
    analysis.PlotMedianQuartileRange = analysis.PlotMeanSD196TimesSD = analysis.PlotMeanSE196TimesSE = 1;
    EXPECT_EQ(Plots(&CDrillDown::RVBoxWhiker),
              title + "52, 3 cases\n" + title + "54, 3 cases\n" + title + "53, 3 cases\n" + title + "55, 3 cases\n");
    analysis.PlotMedianQuartileRange = analysis.PlotMeanSEAndSD = 0;
    analysis.PlotMeanSD196TimesSD = analysis.PlotMeanSE196TimesSE = 0;
    analysis.DataChanged = 1;
    EXPECT_EQ(Plots(&CDrillDown::RVBoxWhiker), "Please check the type of Box and Whisker plot\ngave 0");
    EXPECT_EQ(analysis.DataChanged, 1);  // refused before anything is brought up to date
}

TEST_F(ReviewPlots, ScatterplotsFrom15VariablesOnArePlain) {
    for (const int variables : {14, 15}) {
        std::vector<quillara::Variable> table;
        Names names;
        for (int variable = 0; variable < variables; ++variable) {
            names.push_back("v" + std::to_string(variable));
            table.push_back(Numbers(names.back(), {1, 2, 4}));
        }
        Open(std::move(table));
        Choose({"v0"});
        Review({}, names);
        EXPECT_EQ(Plots(&CDrillDown::RVScatterPlot), "Correlations\nN Total: 3, Selected: 3: flags " +
                                                         std::string(variables == 14 ? "204" : "68") + ", 3 cases\n");
    }
}

TEST_F(ReviewPlots, Histograms3DPairEachFirstVariableWithEachSecond) {
    Open({Numbers("x", {1, 2, 3}), Numbers("a", {1, 2, 2}), Numbers("b", {1, 5, 9})});
    Choose({"x"});
    Review({"a"}, {"b"});
    Pair({2, 3}, {2, 3});
    EXPECT_EQ(Plots(&CDrillDown::RV3DHistograms),
              "3D Histogram for variables: a and a: a a, 3 cases\n3D Histogram for variables: a and b: a b, 3 cases\n"
              "3D Histogram for variables: b and a: b a, 3 cases\n3D Histogram for variables: b and b: b b, 3 cases\n");
    Host().Services.WorkIn = nullptr;  // the user cancels
    EXPECT_EQ(Plots(&CDrillDown::RV3DHistograms), "gave 0");
}

TEST_F(ReviewPlots, StepsNarrowThePlotsAndAStepOnMissingEmptiesThem) {
    Open({Numbers("x", {1, 2, 2, NA}), Numbers("y", {1, 2, 3, 4})});
    Choose({"x"});
    Review({}, {"y"});
    Pair({2}, {2});
    const auto plots = [this] {
        std::string text = Plots(&CDrillDown::RVBoxWhiker);
        text += Plots(&CDrillDown::RVScatterPlot);
        text += Plots(&CDrillDown::RV3DHistograms);
        std::string cases;
        for (std::size_t at = text.find(" cases\n"); at != std::string::npos; at = text.find(" cases\n", at + 1)) {
            cases += text[at - 1];
        }
        return cases;
    };
    EXPECT_EQ(plots(), "444");
    EXPECT_EQ(plots(), "444") << "the pair of the last 3D histogram plays no part";
    Down("x", "2");
    EXPECT_EQ(plots(), "222");
    Up("x");
    Down("x", "Missing");
    EXPECT_EQ(State(), "x | 0 open, 1 cases");
    EXPECT_EQ(plots(), "000");
}

}  // namespace drilltest
