// What is painted of the plots of review variables: where their points, boxes and numbers lie, and that no case is
// lost.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <QImage>
#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <set>

#include "tests/workbench/charts/TestGraphs.h"
#include "workbench/charts/BoxPanels.h"
#include "workbench/charts/ChartPainter.h"
#include "workbench/charts/OffscreenApplication.h"
#include "workbench/charts/ScatterCells.h"
#include "workbench/charts/ScatterGrid.h"
#include "workbench/plots/BoxPlots.h"
#include "workbench/plots/ScatterMatrices.h"

namespace quillara {
namespace {

using testing::Contains;
using testing::IsSupersetOf;

constexpr double Missing = std::numeric_limits<double>::quiet_NaN();

Variable Column(const std::string& name, const Numbers& values, ValueKind kind = ValueKind::Number) {
    Variable variable;
    variable.Name = name;
    variable.Kind = kind;
    variable.Values = values;
    variable.MissingCode = EncodeMissing(variable.Values);
    return variable;
}

DataTable Table(const std::vector<Variable>& variables) {
    DataTable table;
    table.Cases = static_cast<std::int32_t>(variables.front().Values.size());
    table.Variables = variables;
    return table;
}

PlotRows AllRows(const DataTable& table) {
    PlotRows rows(static_cast<std::size_t>(table.Cases));
    std::iota(rows.begin(), rows.end(), 0U);
    return rows;
}

ScatterMatrix MatrixOf(const DataTable& table, std::uint16_t flags) {
    const PlotRows rows = AllRows(table);
    std::vector<std::size_t> variables(table.Variables.size());
    std::iota(variables.begin(), variables.end(), std::size_t{0});
    return ScatterMatrixOf({table, variables, rows, flags, {}, {}});
}

Subject KindsOf(const DataTable& table) {
    Subject about;
    for (const Variable& variable : table.Variables) {
        about.Variables.push_back({.Name = variable.Name, .LongName = {}, .Kind = variable.Kind, .Categories = {}});
    }
    return about;
}

std::vector<std::string> PaintedTexts(const GraphDocument& document, QSize size = {900, 600}) {
    EnsureApplication();
    QCustomPlot plot;
    BuildChart(plot, document, {size.width(), size.height(), false});
    QImage image(size, QImage::Format_RGB32);
    PaintPlot(plot, image, size);
    std::vector<std::string> texts;
    for (const PlacedText& text : ChartTexts(plot)) {
        texts.push_back(text.Text.toStdString());
    }
    return texts;
}

std::string Joined(const std::vector<AxisMark>& marks) {
    QStringList texts;
    std::ranges::transform(marks, std::back_inserter(texts), &AxisMark::Text);
    return texts.join(' ').toStdString();
}

TEST(RoundValues, HaveTheDigitsOfTheirStepAndTheFormOfTheirKind) {
    constexpr auto number = ValueKind::Number;
    constexpr auto date = ValueKind::Date;
    constexpr auto time = ValueKind::TimeOfDay;
    struct Row {
        ValueKind Kind;
        double Low;
        double High;
        int Most;
        const char* Texts;
    };
    // clang-format off
    const Row rows[] = {
        // Kind  Low        High       Most
        {number, 1.7e9,     1.7000004e9,  5, "1700000000 1700000100 1700000200 1700000300 1700000400"},
        {number, 20230101,  20230131,     4, "20230110 20230120 20230130"},
        {number, 1e14,      3e14,         3, "100000000000000 200000000000000 300000000000000"},
        {number, 1e17,      1.1e17,       3, "1.00e+17 1.05e+17 1.10e+17"},
        {number, 1e-300,    3e-300,       3, "1e-300 2e-300 3e-300"},
        {number, -1.7e308,  1.7e308,      4, "-1e+308 0 1e+308"},
        {number, -4.3,      4.3,          4, "-4 0 4"},
        {number, 5e-324,    1e-320,       5, "0"},
        {date,   19782,     19788,       10, "2024-02-29 2024-03-01 2024-03-02 2024-03-03 2024-03-04 2024-03-05 2024-03-06"},
        {date,   19722,     19850,        6, "2024-01 2024-02 2024-03 2024-04 2024-05"},
        {date,   17900,     19850,        4, "2020 2022 2024"},
        {date,   -25567,    25567,        5, "1900 1950 2000"},
        {date,   19725,     19753,        2, "2024-01-03 2024-01-18"},
        {date,   19782,     19782,        5, "2024-02-29"},
        {date,   1e9,       2e9,          3, "1000000000 1500000000 2000000000"},
        {time,   32400,     73800,        5, "09:00 12:00 15:00 18:00"},
        {time,   32400,     32420,        5, "09:00:00 09:00:05 09:00:10 09:00:15 09:00:20"},
        {time,   0,         400000,       4, "00:00 48:00 96:00"},
    };
    // clang-format on
    for (const Row& row : rows) {
        EXPECT_EQ(Joined(RoundValues(row.Low, row.High, row.Most, row.Kind)), row.Texts);
    }
    std::mt19937 random(5);
    std::uniform_real_distribution<double> share;
    for (int trial = 0; trial < 3000; ++trial) {
        const double scale = std::pow(10.0, share(random) * 600 - 300);
        const double low = (share(random) - 0.5) * scale;
        const double high = low + share(random) * scale;
        const int most = 2 + static_cast<int>(random() % 10);
        for (const ValueKind kind : {number, date, time}) {
            const std::vector<AxisMark> marks = RoundValues(low, high, most, kind);
            EXPECT_LE(marks.size(), static_cast<std::size_t>(most));
            EXPECT_FALSE(marks.empty()) << low << " to " << high << " most " << most;
            const double slack = (high - low) * 1e-6;
            for (const AxisMark& mark : marks) {
                EXPECT_TRUE(low - slack <= mark.At && mark.At <= high + slack) << mark.At;
            }
            const std::set<QString> texts = [&] {
                std::set<QString> all;
                std::ranges::transform(marks, std::inserter(all, all.end()), &AxisMark::Text);
                return all;
            }();
            EXPECT_EQ(texts.size(), marks.size()) << Joined(marks) << " from " << low << " to " << high;
        }
    }
}

TEST(NumberTexts, KeepWholeNumbersAndDecimals) {
    EXPECT_EQ(NumberText(20230103), "20230103");
    EXPECT_EQ(NumberText(123456789012345), "123456789012345");
    EXPECT_EQ(NumberText(20230103.456), "20230103.46");
    EXPECT_EQ(NumberText(-0.0), "0");
    EXPECT_EQ(NumberText(0.000123456789), "0.000123457");
    EXPECT_EQ(NumberText(1e300), "1e+300");
    EXPECT_EQ(ValueText(19782.4, ValueKind::Date), "2024-02-29");
    EXPECT_EQ(DistanceText(12.5, ValueKind::Date), "12.5 days");
    EXPECT_EQ(DistanceText(90, ValueKind::TimeOfDay), "00:01:30");
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
        table.Variables.push_back(Column(name, values, kind));
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

/// Groups of touching pixels that aren't transparent.
int PaintedSpots(const QImage& image) {
    std::set<std::pair<int, int>> painted;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0) {
                painted.emplace(x, y);
            }
        }
    }
    int spots = 0;
    while (!painted.empty()) {
        ++spots;
        std::vector<std::pair<int, int>> open{*painted.begin()};
        painted.erase(painted.begin());
        while (!open.empty()) {
            const auto [x, y] = open.back();
            open.pop_back();
            for (const auto& next :
                 {std::pair(x + 1, y), std::pair(x - 1, y), std::pair(x, y + 1), std::pair(x, y - 1)}) {
                if (painted.erase(next) > 0) {
                    open.push_back(next);
                }
            }
        }
    }
    return spots;
}

TEST(ScatterCounts, NoCaseIsLost) {
    std::mt19937 random(9);
    std::uniform_real_distribution<float> share;
    for (const auto& [width, height] : {std::pair(20, 14), std::pair(150, 90), std::pair(600, 400)}) {
        std::vector<float> x(20000);
        std::vector<float> y(20000);
        std::ranges::generate(x, [&] { return random() % 9 == 0 ? std::nanf("") : share(random); });
        std::ranges::generate(y, [&] { return random() % 9 == 0 ? std::nanf("") : share(random) * share(random); });
        const PixelCounts counts =
            CountedCases(PixelPlacesOf(x, 3, width - 3, width), width, PixelPlacesOf(y, height - 3, 3, height), height);
        std::int64_t cases = 0;
        std::set<std::pair<int, int>> places;
        for (std::size_t i = 0; i < x.size(); ++i) {
            if (!std::isnan(x[i]) && !std::isnan(y[i])) {
                ++cases;
                places.emplace(
                    static_cast<int>(3 + x[i] * static_cast<float>(width - 6)),
                    static_cast<int>(static_cast<float>(height - 3) - y[i] * static_cast<float>(height - 6)));
            }
        }
        EXPECT_EQ(std::accumulate(counts.Counts.begin(), counts.Counts.end(), std::int64_t{0}), cases);
        EXPECT_EQ(std::ranges::count_if(counts.Counts, [](std::uint32_t count) { return count > 0; }),
                  static_cast<std::ptrdiff_t>(places.size()));
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
        QImage image(210, 110, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        DrawCounts(painter, counts, {5, 5}, isDark);
        painter.end();
        EXPECT_EQ(PaintedSpots(image), 101);
        const QColor lone = image.pixelColor(24, 14);
        EXPECT_EQ(lone.alpha(), 255);
        EXPECT_EQ(image.pixelColor(23, 13).alpha() + image.pixelColor(25, 15).alpha(), 255)
            << "two pixels wide and high";
        EXPECT_GT(std::abs(qGray(lone.rgb()) - qGray(ground.rgb())), 60);
    }
}

TEST(ScatterCounts, PointsStayWithinTheirPixels) {
    QImage image(60, 60, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    DrawPointsOnPixels(painter, {{20, 20}, {39.9, 20}, {-500, 3}, {30, 41}}, {20, 20, 20, 20}, {Qt::blue, 5});
    painter.end();
    for (int i = 0; i < 60 * 60; ++i) {
        const bool isInside = QRect(20, 20, 20, 20).contains(i % 60, i / 60);
        EXPECT_TRUE(isInside || qAlpha(image.pixel(i % 60, i / 60)) == 0) << i;
    }
    EXPECT_GT(qAlpha(image.pixel(20, 20)), 200);
}

TEST(ScatterLines, AreCutAtTheCell) {
    EXPECT_EQ(LineWithin({0, 50, 100, 50}, 10, 90), QLineF(0, 50, 100, 50));
    EXPECT_EQ(LineWithin({0, 190, 100, -10}, 10, 90), QLineF(50, 90, 90, 10));
    EXPECT_TRUE(LineWithin({0, 5, 100, 6}, 10, 90).isNull());
    EXPECT_TRUE(LineWithin({0, std::nan(""), 100, 6}, 10, 90).isNull());
}

TEST(ScatterChart, SaysWhatItShows) {
    const DataTable table =
        Table({Column("a", {1, 2, 3, 4, 5}), Column("b", {3, 1, 4, 1, 3}), Column("c", {.1, .1, .1, .1, .1}),
               Column("day", {19782, 19800, 19850, 19900, 19990}, ValueKind::Date)});
    ScatterMatrix matrix = MatrixOf(table, ScatterFlag::DetailedMatrix);
    matrix.Cells[1].Correlation = -0.001;
    matrix.UnusedWeight = "w";
    const auto texts = PaintedTexts({{"Correlations"}, KindsOf(table), matrix});
    EXPECT_THAT(texts, IsSupersetOf({"r = 0.00", "2024-03", "0.1"}));
    EXPECT_THAT(texts, Contains(testing::StartsWith("Not weighted by w")));
    EXPECT_EQ(std::ranges::count_if(texts, [](const std::string& text) { return text.starts_with("r = "); }), 6);
    const DataTable none = Table({Column("a", {Missing, Missing}), Column("b", {Missing, Missing})});
    EXPECT_THAT(PaintedTexts({{"Correlations"}, {}, MatrixOf(none, 204)}), Contains("No cases"));
}

GraphDocument BoxesOf(const DataTable& table, BoxType type, const CaseWeights& weights = {}) {
    std::vector<std::size_t> variables(table.Variables.size());
    std::iota(variables.begin(), variables.end(), std::size_t{0});
    const PlotRows rows = AllRows(table);
    return {{"Boxes"}, KindsOf(table), BoxPlotOf({table, variables, rows, type, weights})};
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
    const DataTable table = Table({Column("a", {1, 2, 3, Missing}), Column("huge", {1e300, 2e300, 3e300, 4e300}),
                                   Column("start", {32400, 36000, 39600, 43200}, ValueKind::TimeOfDay),
                                   Column("none", std::vector<double>(4, Missing))});
    const auto texts = PaintedTexts(BoxesOf(table, BoxType::MeanSEAndSD, {weights, "w"}));
    EXPECT_THAT(texts, IsSupersetOf({"n\u00A0=\u00A03", "n\u00A0=\u00A04", "n\u00A0=\u00A00", "11:00", "2.0e+300", "a",
                                     "none"}));
    EXPECT_THAT(texts, Contains("Weighted by w, fractions as they are"));
    EXPECT_THAT(PaintedTexts(BoxesOf(Table({Column("none", {Missing})}), BoxType::MeanSEAndSD)), Contains("No cases"));
}

// The loop over the stripes of a bar of missing data never came to its end where doubles have no steps of a pixel.
TEST(ChartSpots, BarsOfAnyHeightArePainted) {
    for (const double count : {1e15, 1e250, 1e300}) {
        GraphDocument graph = Bars({"a", "b"}, {1, count}, 5);
        std::get<Histogram>(graph.Content).Series.front().Points.back().IsMissing = true;
        EXPECT_THAT(PaintedTexts(graph, {320, 240}), Contains("b"));
    }
}

}  // namespace
}  // namespace quillara
