#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quillara {

/// What a graph shows. The first three are bar charts and pies that an analysis hands over as series; the others are
/// computed by the host from the cases.
enum class ChartKind : std::uint8_t { Histogram, Pie, Stacked, Box, Scatter, Histogram3D };

/// A text at a position of an axis.
struct AxisLabel {
    double At = 0.0;
    std::string Text;
};

struct GraphAxis {
    std::string Caption;
    double Min = 0.0;
    double Max = 0.0;
    double Step = 1.0;
    std::vector<AxisLabel> Labels;  ///< in the order of their positions
};

/// A point of a series; one that was never written has no numbers (NaN).
struct GraphPoint {
    double X = 0.0;
    double Y = 0.0;
};

/// The numbers of one series as the call gave them; see CAnalysisSupport::NewGeneralMultipleChartLongEx.
struct GraphSeries {
    std::string Name;
    int Kind = 0;  ///< 5 bars, 10 pie
    int AttributeB = 0;
    int AttributeC = 0;
    int Color = 0;  ///< the analysis's own number of a colour
    double Width = 0.0;  ///< of a bar, in units of the x axis
    int Flags = 0;
    std::vector<GraphPoint> Points;
    std::vector<std::string> Labels;  ///< of the points, in their order; empty: none
};

/// The box of one variable in a box-whisker plot.
struct BoxStatistics {
    std::string Variable;  ///< name
    std::string LongName;  ///< may be empty
    std::int64_t Cases = 0;  ///< valid cases; 0: nothing is drawn
    double Middle = 0.0;  ///< median or mean
    double BoxLow = 0.0;
    double BoxHigh = 0.0;
    double WhiskerLow = 0.0;
    double WhiskerHigh = 0.0;
    std::vector<double> Outliers;  ///< ascending, each value once; beyond the whiskers, within 3 box lengths of the box
    std::vector<double> Extremes;  ///< ascending, each value once; farther out
};

/// Which statistics a box-whisker plot shows, by the numbers of the call.
enum class BoxType : int {
    MedianQuartilesRange = 52,
    MeanSDAnd196SD = 53,
    MeanSEAndSD = 54,
    MeanSEAnd196SE = 55,
};

struct BoxPlot {
    BoxType Type = BoxType::MeanSEAndSD;
    std::vector<BoxStatistics> Boxes;
};

/// Counts of values in intervals of one width; the first begins at Low.
struct BinnedCounts {
    double Low = 0.0;
    double Step = 1.0;
    std::vector<double> Counts;
};

/// One variable of a scatterplot matrix.
struct ScatterVariable {
    std::string Name;
    std::string LongName;  ///< may be empty
    std::int64_t Cases = 0;  ///< valid cases
    double Min = 0.0;
    double Max = 0.0;
    double Mean = 0.0;
    double StandardDeviation = 0.0;
    BinnedCounts Histogram;  ///< for the diagonal
};

/// How many points fall on each place of a square grid over the ranges of both variables: rows of y from below.
struct DensityGrid {
    int Columns = 0;
    int Rows = 0;
    std::vector<float> Counts;  ///< Columns x Rows, row by row
};

/// The cell of two variables: the one of the row against the one of the column.
struct ScatterCell {
    std::int64_t Cases = 0;  ///< cases in which both are valid
    double Correlation = 0.0;  ///< Pearson's; NaN when it isn't defined
    double Intercept = 0.0;  ///< of the fitted line, y on x; NaN when it isn't defined
    double Slope = 0.0;
    std::vector<std::pair<float, float>> Points;  ///< x and y; empty when Density holds them
    std::optional<DensityGrid> Density;  ///< in place of more points than a cell has pixels
};

struct ScatterMatrix {
    std::uint16_t Flags = 0;  ///< 8: a histogram on the diagonal; 128: a fitted line in each cell
    std::vector<ScatterVariable> Variables;
    std::vector<ScatterCell> Cells;  ///< row by row, a square; the cells of the diagonal are empty
};

/// One side of a 3D histogram: its categories or intervals, in order.
struct Histogram3DSide {
    std::string Variable;
    std::string LongName;  ///< may be empty
    std::vector<std::string> Labels;
};

struct Histogram3DPlot {
    Histogram3DSide X;
    Histogram3DSide Y;
    std::vector<double> Counts;  ///< X.Labels x Y.Labels, row by row of y: the count of (x, y) stands at y * |X| + x
    std::int64_t Cases = 0;  ///< cases counted
};

/// A graph as plain data: all that the call of the analysis gave, or what the host has computed. All texts are whole:
/// no key of a long text is left in them, but in axis labels that were cut to their field.
struct GraphDocument {
    ChartKind Chart = ChartKind::Histogram;
    std::vector<std::string> Title;  ///< title lines up to the last that isn't empty; may hold line feeds
    std::uint16_t Flags = 0;
    std::array<std::array<int, 3>, 3> Options{};  ///< three triples of option words
    GraphAxis X;
    GraphAxis Y;
    std::vector<GraphSeries> Series;  ///< of charts that were handed over
    std::variant<std::monostate, BoxPlot, ScatterMatrix, Histogram3DPlot> Computed;  ///< of the others
};

}  // namespace quillara
