#include "workbench/exploration/DrillOffers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "workbench/data/Errors.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/exploration/BrushedBars.h"
#include "workbench/exploration/Exploration.h"
#include "workbench/exploration/ExploredOutputs.h"
#include "workbench/exploration/ShownBars.h"
#include "workbench/formats/DataFile.h"
#include "workbench/hosting/AnalysisServices.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

using testing::ElementsAre;

/// Chooses variables once, and the first category whenever a list is opened.
struct Chooser : ExplorationListener {
    bool WorkIn(Window& dialog) override {
        if (Lists) {
            std::exchange(Lists, {})(dialog);
        } else {
            dialog.Click(1);
        }
        return dialog.IsClosed();
    }
    bool Pick(BrushingRun& /*run*/) override { return false; }
    void ShowMessage(std::string_view /*text*/) override {}
    void DocumentAppeared(ResultDocument& /*document*/) override {}
    void DocumentChanged(ResultDocument& /*document*/) override {}
    void DocumentCameToFront(ResultDocument& /*document*/) override {}
    void DocumentWent(ResultDocument& /*document*/) override {}
    void TableMade(std::shared_ptr<const DataTable> /*table*/) override {}
    void RemarkMade(const Remark& /*remark*/) override {}
    void Changed() override {}
    void WorkBegan(std::string_view /*text*/, std::int32_t /*total*/) override {}
    void WorkAdvanced(std::int32_t /*done*/) override {}
    void WorkEnded() override {}

    std::function<void(Window&)> Lists;
};

class DrillOffersTest : public testing::Test {
  protected:
    void Choose(const std::vector<std::string>& categorical, const std::vector<std::string>& continuous, int button) {
        const auto numbers = [this](const std::vector<std::string>& names) {
            std::vector<short> chosen;
            for (const std::string& name : names) {
                chosen.push_back(static_cast<short>(Explored.Table().IndexOf(name) + 1));
            }
            return chosen;
        };
        Viewer.Lists = [=](Window& dialog) { ChooseVariables(dialog, numbers(categorical), numbers(continuous)); };
        Explored.Press(button);
    }
    /// The newest document of a button, on whatever page that is.
    ResultDocument& Make(int button) {
        Explored.Use(Explored.Startup(), [button](Window& startup) { startup.SendCommand(button); });
        return *Explored.Documents().back();
    }
    /// "down sex=Female", "list age", "up sex", with "!" in front of what can't be taken.
    std::vector<std::string> Offers(const ResultDocument& document, const DocumentPlace& place) {
        std::vector<std::string> texts;
        for (const DrillOffer& offer : OffersAt(Explored, document, place)) {
            const char* kind = offer.Kind == OfferKind::Down ? "down " : offer.Kind == OfferKind::Up ? "up " : "list ";
            const std::string category = offer.Category.empty() ? "" : "=" + offer.Category;
            texts.push_back((offer.CanBeTaken() ? "" : "!") + std::string(kind) + offer.Variable + category);
        }
        return texts;
    }
    void Take(const ResultDocument& document, const DocumentPlace& place) {
        TakeOffer(Explored, OffersAt(Explored, document, place).front());
    }
    [[nodiscard]] std::vector<std::string> Steps() {
        std::vector<std::string> steps;
        for (const StepTaken& step : Explored.Steps()) {
            steps.push_back(step.Condition());
        }
        return steps;
    }

    Chooser Viewer;
    Exploration Explored{std::make_shared<DataTable>(ReadDataFile(testing_locations::Sample("survey.sav"))),
                         {testing_locations::Sample("survey.sav")},
                         Viewer,
                         nullptr};
};

TEST_F(DrillOffersTest, EveryKindOfPlaceOffersItsStep) {
    Choose({"sex", "region"}, {"income"}, DrillVariablesButton);
    Choose({"region"}, {"age", "income"}, ReviewVariablesButton);
    Explored.Press(HistogramsButton);
    Explored.Press(PieChartsButton);
    Explored.Press(FrequenciesButton);
    const auto documents = Explored.Documents();
    ASSERT_EQ(documents.size(), 9U);
    ResultDocument& stacked = Make(StackedPlotsButton);
    ResultDocument& descriptives = Make(DescriptivesButton);
    ResultDocument& boxes = Make(ReviewBoxWhiskerButton);
    ResultDocument& matrix = Make(ReviewScatterplotButton);
    const struct {
        const ResultDocument& Document;
        DocumentPlace Place;
        std::vector<std::string> Offers;
    } rows[] = {
        {*documents[0], {.Series = 0, .Point = 1}, {"down sex=Male"}},
        {*documents[0], {}, {}},
        {*documents[0], {.Series = 0, .Point = 77}, {}},
        {*documents[2], {.Series = 0, .Point = 0}, {"down income=0<x<=2000"}},
        {*documents[2], {.Series = 0, .Point = 8}, {"down income=Missing"}},
        {*documents[4], {.Series = 0, .Point = 2}, {"down region=Central Plain"}},
        {*documents[7], {.Row = 0}, {"down region=Northern Highlands"}},
        {*documents[8], {.Row = 8}, {"down income=Missing"}},
        {stacked, {.Series = 0, .Point = 0}, {"down sex=Male"}},
        {descriptives, {.Row = 0}, {"list income"}},
        {boxes, {.Point = 0}, {"!list age"}},
        {matrix, {.Point = 1}, {"list income", "!list age"}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Offers(row.Document, row.Place), row.Offers) << row.Document.Name();
    }
    Take(*documents[8], {.Row = 8});
    EXPECT_THAT(Steps(), ElementsAre("income = Missing"));
    Take(stacked, {.Series = 0, .Point = 0});
    EXPECT_THAT(Steps(), ElementsAre("income = Missing", "sex = Male"));
    EXPECT_THAT(Offers(*documents[0], {.Series = 0, .Point = 1}), ElementsAre("!down sex=Male", "up sex", "up income"));
    EXPECT_THAT(Offers(*documents[4], {.Series = 0, .Point = 2}),
                ElementsAre("down region=Central Plain", "up sex", "up income"));
    ResultDocument& summary = Make(SummaryButton);
    EXPECT_THAT(Offers(summary, {.Row = 0}), testing::Contains("up sex"));
    TakeOffer(Explored, {OfferKind::Up, "income"});
    EXPECT_THAT(Steps(), ElementsAre("sex = Male"));
    TakeOffer(Explored, {OfferKind::DownByList, "region"});  // the first of its list
    EXPECT_THAT(Steps(), ElementsAre("sex = Male", "region = Northern Highlands"));
}

/// A document that stands still while the exploration goes on shows categories that have gone.
TEST_F(DrillOffersTest, ACategoryThatHasGoneIsRefused) {
    Choose({"sex"}, {"age"}, DrillVariablesButton);
    ResultDocument& ages = Make(HistogramsButton);
    const auto& points = SeriesOf(*ages.Graph())->Series.front().Points;
    DrillOffer last{OfferKind::Down, "age", points.back().Name + "0"};
    EXPECT_THROW(TakeOffer(Explored, last), DataError);
    EXPECT_THAT(Steps(), ElementsAre());
}

TEST_F(DrillOffersTest, AReportTellsTheStepsOfItsDocuments) {
    Choose({"sex", "region"}, {}, DrillVariablesButton);
    Make(FrequenciesButton);
    Explored.Down("sex", "Female");
    ResultDocument& after = Make(FrequenciesButton);
    EXPECT_EQ(FileNameFor(after), "frequencies region");
    auto documents = Explored.Documents();
    std::ranges::reverse(documents);
    const OutputCollection outputs = OutputsOf(Explored, documents);
    ASSERT_EQ(outputs.Entries.size(), 3U);
    EXPECT_EQ(outputs.Entries.front().Step, 0);
    EXPECT_EQ(outputs.Entries.back().Step, 1);
    EXPECT_EQ(outputs.Steps.size(), 1U);
    EXPECT_EQ(outputs.Selected->Cases, 2000);
}

TEST(BrushedBars, OnlyBarsWithCasesAreLit) {
    CGraphBrushRgnGraph regions;
    regions.resize(4);
    const double heights[] = {0.0, 5.0, 0.0, 0.001};
    for (int i = 0; i < 4; ++i) {
        regions.set(i, 0.0, i + 0.55, heights[i], i + 1.45, "CATEGORY: a\nCOUNT: 5", 4);
    }
    regions.setSelected(0);
    BrushedBars bars(regions);
    EXPECT_EQ(bars.Lit(), std::nullopt);
    EXPECT_EQ(bars.Line(), "");
    bars.Move(-1);
    EXPECT_EQ(bars.Lit(), 3);
    bars.Move(-1);
    EXPECT_EQ(bars.Lit(), 1);
    bars.Move(-1);
    EXPECT_EQ(bars.Lit(), 1);
    EXPECT_EQ(bars.Line(), "CATEGORY: a, COUNT: 5");
    EXPECT_EQ(bars.At(2.0, 4.9, 0.5), 1);
    EXPECT_EQ(bars.At(2.0, 5.1, 0.5), std::nullopt);
    EXPECT_EQ(bars.At(1.0, 0.1, 0.5), std::nullopt);
    EXPECT_EQ(bars.At(4.0, 0.4, 0.5), 3);
}

TEST(ShownBars, BarsAreFoundByTheirCategory) {
    const auto histogram = [](const std::vector<std::string>& names) {
        Histogram chart;
        chart.Series.resize(1);
        for (const std::string& name : names) {
            chart.Series.front().Points.push_back({1.0, 1.0, name, name == "Missing"});
        }
        return ShownBars(GraphDocument{{}, {}, chart});
    };
    const ShownBars before = histogram({"a", "b", "c", "Missing"});
    const ShownBars after = histogram({"b", "d", "Missing"});
    EXPECT_EQ(after.Find(before, {0, 0}), std::nullopt);
    EXPECT_EQ(after.Find(before, {0, 1}), ShownBars::Place(0, 0));
    EXPECT_EQ(after.Find(before, {0, 3}), ShownBars::Place(0, 2));
    EXPECT_EQ(after.Find(before, {0, 9}), std::nullopt);
}

}  // namespace
}  // namespace quillara
