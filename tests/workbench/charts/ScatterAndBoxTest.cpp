// What is painted of the plots of review variables: where their points and boxes lie, and that no case is lost.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QBitmap>
#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <numeric>
#include <random>

#include "tests/workbench/Tables.h"
#include "tests/workbench/charts/Painted.h"
#include "tests/workbench/charts/TestGraphs.h"
#include "workbench/charts/BoxPanels.h"
#include "workbench/charts/ScatterCells.h"
#include "workbench/charts/ScatterGrid.h"
#include "workbench/plots/BoxPlots.h"
#include "workbench/plots/ScatterMatrices.h"

namespace quillara {
namespace {

using testing::Contains;
using testing::IsSupersetOf;

std::vector<std::size_t> AllVariables(const DataTable& table) {
    std::vector<std::size_t> variables(table.Variables.size());
    std::iota(variables.begin(), variables.end(), std::size_t{0});
    return variables;
}

ScatterMatrix MatrixOf(const DataTable& table, std::uint16_t flags) {
    return ScatterMatrixOf({table, AllVariables(table), AllRows(table), flags, {}, {}});
}

Subject KindsOf(const DataTable& table) {
    Subject about;
    for (const Variable& variable : table.Variables) {
        about.Variables.push_back({.Name = variable.Name, .LongName = {}, .Kind = variable.Kind, .Categories = {}});
    }
    return about;
}

/// 400 cases of every magnitude, with ties, dates, ids, a constant and missing data.
DataTable EveryMagnitude() {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> share;
    DataTable table;
    table.Cases = 400;
    const auto add = [&](const char* name, ValueKind kind, auto value) {
        std::vector<double> values(400);
        std::ranges::generate(values, [&] { return random() % 20 == 0 ? Missing : value(); });
        table.Variables.push_back(Numbers(name, values, kind));
    };
    add("tiny", ValueKind::Number, [&] { return share(random) * 1e-300; });
    add("huge", ValueKind::Number, [&] { return (share(random) - 0.5) * 1.7e308 * 2; });
    add("ymd", ValueKind::Number, [&] { return 20230101 + static_cast<double>(random() % 31); });
    add("unix", ValueKind::Number, [&] { return 1.7e9 + static_cast<double>(random() % 1000); });
    add("day", ValueKind::Date, [&] { return 19700 + static_cast<double>(random() % 100); });
    add("constant", ValueKind::Number, [&] { return 0.1; });
    add("skewed", ValueKind::Number, [&] { return std::exp(20 * share(random)); });
    return table;
}

TEST(ScatterGeometry, PointsBarsAndNumbersLieWithinTheirCells) {
    EnsureApplication();
    const DataTable table = EveryMagnitude();
    const ScatterMatrix matrix = MatrixOf(table, ScatterFlag::DetailedMatrix);
    for (const QSizeF size : {QSizeF(300, 200), QSizeF(880, 560), QSizeF(2400, 1600)}) {
        const ScatterGrid grid(matrix, KindsOf(table), QRectF(QPointF(10, 10), size), StyleOf({}));
        const double radius = grid.PointSize() / 2;
        for (std::size_t i = 0; i < matrix.Variables.size(); ++i) {
            const QRectF cell = grid.Cell(i, i);
            const ScatterVariable& variable = matrix.Variables[i];
            for (const float place : *variable.Places) {
                if (!std::isnan(place)) {
                    EXPECT_TRUE(cell.left() + radius <= grid.Across(i, place) &&
                                grid.Across(i, place) <= cell.right() - radius);
                    EXPECT_TRUE(cell.top() + grid.HeadingHeight() + radius <= grid.Up(i, place) &&
                                grid.Up(i, place) <= cell.bottom() - radius);
                }
            }
            const ScatterSide& side = grid.Side(i);
            if (side.Min < side.Max) {
                const BinnedCounts& bins = variable.Histogram;
                const double end = bins.Low + bins.Step * static_cast<double>(bins.Counts.size());
                EXPECT_GE(grid.Across(i, side.PlaceOf(bins.Low)), cell.left()) << variable.Name;
                EXPECT_LE(grid.Across(i, side.PlaceOf(end)), cell.right()) << variable.Name;
            }
        }
        EXPECT_FALSE(grid.Labels().empty());
        for (const PlacedText& label : grid.Labels()) {
            EXPECT_FALSE(label.Text.contains(QStringLiteral("inf"))) << label.Text.toStdString();
        }
    }
}

TEST(ScatterGeometry, PlacesAreThoseOfTheValues) {
    const DataTable table = EveryMagnitude();
    const ScatterMatrix matrix = MatrixOf(table, 0);
    const ScatterGrid grid(matrix, KindsOf(table), QRectF(0, 0, 900, 600), StyleOf({}));
    for (std::size_t i = 0; i < matrix.Variables.size(); ++i) {
        for (std::size_t row = 0; row < 400; ++row) {
            const double value = table.Variables[i].Values[row];
            const float place = (*matrix.Variables[i].Places)[row];
            EXPECT_EQ(std::isnan(place), table.Variables[i].IsMissing(value));
            if (!std::isnan(place)) {
                EXPECT_NEAR(grid.Across(i, place), grid.Across(i, grid.Side(i).PlaceOf(value)), 0.01);
            }
        }
    }
}

/// What is painted on nothing.
QImage PaintedOnNothing(QSize size, const std::function<void(QPainter&)>& paint) {
    EnsureApplication();
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paint(painter);
    return image;
}

/// The pixels that aren't transparent.
QRegion PixelsOf(const QImage& image) {
    return QBitmap::fromImage(image.createMaskFromColor(0, Qt::MaskInColor));
}

TEST(ScatterCounts, NoCaseIsLost) {
    std::mt19937 random(9);
    std::uniform_real_distribution<float> share;
    for (const QSize size : {QSize(20, 14), QSize(150, 90), QSize(600, 400)}) {
        const int width = size.width();
        const int height = size.height();
        std::vector<float> x(20000);
        std::vector<float> y(20000);
        std::ranges::generate(x, [&] { return random() % 9 == 0 ? std::nanf("") : share(random); });
        std::ranges::generate(y, [&] { return random() % 9 == 0 ? std::nanf("") : share(random) * share(random); });
        const PixelSide across{3.0, width - 3.0, width};
        const PixelSide up{height - 3.0, 3.0, height};
        const CellCounts cells = CountedCases(PixelStepsOf(x, across, up), PixelStepsOf(y, across, up));
        const auto pixelOf = [&](float right, float above) {
            return std::pair(static_cast<int>(3 + right * static_cast<float>(width - 6)),
                             static_cast<int>(static_cast<float>(height - 3) - above * static_cast<float>(height - 6)));
        };
        std::map<std::pair<int, int>, std::uint32_t> yUp;
        std::map<std::pair<int, int>, std::uint32_t> xUp;
        for (std::size_t i = 0; i < x.size(); ++i) {
            if (!std::isnan(x[i]) && !std::isnan(y[i])) {
                ++yUp[pixelOf(x[i], y[i])];
                ++xUp[pixelOf(y[i], x[i])];
            }
        }
        for (int row = 0; row < height; ++row) {
            for (int column = 0; column < width; ++column) {
                EXPECT_EQ(cells.SecondUp.At(column, row), yUp[std::pair(column, row)]);
                EXPECT_EQ(cells.FirstUp.At(column, row), xUp[std::pair(column, row)]);
            }
        }
    }
}

TEST(ScatterCounts, LoneCasesAreSeenBesideACrowd) {
    PixelCounts counts{200, 100, std::vector<std::uint32_t>(20000)};
    counts.Counts[0] = 1000000;
    for (int i = 0; i < 100; ++i) {
        counts.Counts[static_cast<std::size_t>(i / 10 * 10 + 9) * 200 + static_cast<std::size_t>(i % 10 * 20 + 19)] = 1;
    }
    for (const bool isDark : {false, true}) {
        const QColor ground = StyleOf({.Dark = isDark}).Background;
        const QImage image = PaintedOnNothing({210, 110}, [&](QPainter& painter) {
            DrawCounts(painter, counts, {5, 5}, isDark);
        });
        const QRegion pixels = PixelsOf(image);
        const auto add = [](int sum, const QRect& part) { return sum + part.width() * part.height(); };
        EXPECT_EQ(std::accumulate(pixels.begin(), pixels.end(), 0, add), 4 * 101);
        const QColor lone = image.pixelColor(24, 14);
        EXPECT_EQ(lone.alpha(), 255);
        EXPECT_EQ(image.pixelColor(23, 13).alpha() + image.pixelColor(25, 15).alpha(), 255)
            << "two pixels wide and high";
        EXPECT_GT(std::abs(qGray(lone.rgb()) - qGray(ground.rgb())), 60);
    }
}

TEST(ScatterCounts, PointsStayWithinTheirPixels) {
    constexpr QRect within(20, 20, 20, 20);
    const QImage image = PaintedOnNothing({60, 60}, [&](QPainter& painter) {
        DrawPointsOnPixels(painter, {{20, 20}, {39.9, 20}, {-500, 3}, {30, 41}}, within, {Qt::blue, 5});
    });
    EXPECT_EQ(PixelsOf(image) - within, QRegion());
    EXPECT_GT(qAlpha(image.pixel(20, 20)), 200);
}

TEST(ScatterLines, AreCutAtTheCell) {
    EXPECT_EQ(LineWithin({0, 50, 100, 50}, 10, 90), QLineF(0, 50, 100, 50));
    EXPECT_EQ(LineWithin({0, 190, 100, -10}, 10, 90), QLineF(50, 90, 90, 10));
    EXPECT_TRUE(LineWithin({0, 5, 100, 6}, 10, 90).isNull());
    EXPECT_TRUE(LineWithin({0, 95, 100, 96}, 10, 90).isNull());
    EXPECT_TRUE(LineWithin({0, std::nan(""), 100, 6}, 10, 90).isNull());
}

TEST(ScatterChart, SaysWhatItShows) {
    const DataTable table =
        TableOf({Numbers("a", {1, 2, 3, 4, 5}), Numbers("b", {3, 1, 4, 1, 3}), Numbers("c", {.1, .1, .1, .1, .1}),
                 Numbers("day", {19782, 19800, 19850, 19900, 19990}, ValueKind::Date)});
    ScatterMatrix matrix = MatrixOf(table, ScatterFlag::DetailedMatrix);
    matrix.Cells[1].Correlation = -0.001;
    matrix.UnusedWeight = "w";
    const auto texts = Painted({{"Correlations"}, KindsOf(table), matrix}).Texts();
    EXPECT_THAT(texts, IsSupersetOf({"r = 0.00", "2024-03", "0.1"}));
    EXPECT_THAT(texts, Contains(testing::StartsWith("Not weighted by w")));
    EXPECT_EQ(std::ranges::count_if(texts, [](const std::string& text) { return text.starts_with("r = "); }), 6);
    const DataTable none = TableOf({Numbers("a", {Missing, Missing}), Numbers("b", {Missing, Missing})});
    EXPECT_THAT(Painted({{"Correlations"}, {}, MatrixOf(none, 204)}).Texts(), Contains("No cases"));
}

GraphDocument BoxesOf(const DataTable& table, BoxType type, const CaseWeights& weights = {}) {
    return {{"Boxes"}, KindsOf(table), BoxPlotOf({table, AllVariables(table), AllRows(table), type, weights})};
}

TEST(BoxPanels, HoldBoxesThatCanBeComparedOnOneAxis) {
    struct Row {
        std::vector<std::array<double, 2>> Ranges;
        const char* Panels;
    };
    const Row rows[] = {
        {{{17, 90}, {1, 99}, {0, 99999}}, "0 1|2"},
        {{{0, 1}, {0, 10}, {0, 10.5}}, "0 1|2"},
        {{{17, 90}, {1950, 2024}}, "0|1"},
        {{{0, 1}, {5, 5}, {0, 0}}, "0 1 2"},
        {{{100, 110}, {20230101, 20230101}, {0, 0}}, "0|1 2"},
        {{{1e-300, 2e-300}, {-1e308, 1e308}, {1, 2}}, "0|1|2"},
        {{{NAN, NAN}, {1, 2}}, "0 1"},
        {{{NAN, NAN}}, ""},
    };
    for (const Row& row : rows) {
        BoxPlot plot{BoxType::MedianQuartilesRange, {}};
        for (const auto& [low, high] : row.Ranges) {
            BoxStatistics& box = plot.Boxes.emplace_back();
            box.Cases = std::isnan(low) ? 0 : 3;
            box.Middle = box.BoxLow = box.WhiskerLow = low;
            box.BoxHigh = box.WhiskerHigh = high;
        }
        QStringList panels;
        for (const BoxPanel& panel : PanelsOf(plot, {})) {
            QStringList boxes;
            for (const std::size_t box : panel.Boxes) {
                boxes.append(QString::number(box));
                if (IsDrawn(plot.Boxes[box])) {
                    EXPECT_LT(panel.Range.Low, plot.Boxes[box].WhiskerLow / panel.Unit) << row.Panels;
                    EXPECT_GT(panel.Range.High, plot.Boxes[box].WhiskerHigh / panel.Unit) << row.Panels;
                }
            }
            panels.append(boxes.join(' '));
        }
        EXPECT_EQ(panels.join('|').toStdString(), row.Panels);
    }
}

TEST(BoxChart, SaysWhatItShows) {
    const std::vector<double> weights = {1, 2, 3, 4};
    const DataTable table = TableOf({Numbers("a", {1, 2, 3, Missing}), Numbers("huge", {1e300, 2e300, 3e300, 4e300}),
                                     Numbers("start", {32400, 36000, 39600, 43200}, ValueKind::TimeOfDay),
                                     Numbers("none", std::vector<double>(4, Missing))});
    const auto texts = Painted(BoxesOf(table, BoxType::MeanSEAndSD, {weights, "w"})).Texts();
    EXPECT_THAT(texts, IsSupersetOf({"n\u00A0=\u00A03", "n\u00A0=\u00A04", "n\u00A0=\u00A00", "11:00", "2.0e+300", "a",
                                     "none"}));
    EXPECT_THAT(texts, Contains("Weighted by w, fractions as they are"));
    const DataTable empty = TableOf({Numbers("none", {Missing})});
    GraphDocument boxes = BoxesOf(empty, BoxType::MeanSEAndSD);
    const auto ofSelection = Painted(boxes).Texts();
    EXPECT_THAT(ofSelection, Contains("No cases"));
    boxes.About.IsEmptied = true;
    EXPECT_GT(Painted(boxes).Texts().size(), ofSelection.size());  // the step on missing data is named
}

// The loop over the stripes of a bar of missing data never came to its end where doubles have no steps of a pixel.
TEST(ChartSpots, BarsOfAnyHeightArePainted) {
    for (const double count : {1e15, 1e250, 1e300}) {
        GraphDocument graph = Bars({"a", "b"}, {1, count}, 5);
        std::get<Histogram>(graph.Content).Series.front().Points.back().IsMissing = true;
        EXPECT_THAT(Painted(graph, {320, 240}).Texts(), Contains("b"));
    }
}

}  // namespace
}  // namespace quillara
