#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/Charts.h"
#include "workbench/documents/Subject.h"

namespace quillara {

/// A text at a position of an axis.
struct AxisLabel {
    double At = 0.0;
    std::string Text;  ///< as the call gave it, cut to its field
    std::string Whole{};  ///< the whole name; empty: not known
    bool IsMissing = false;  ///< it stands for missing data

    [[nodiscard]] const std::string& Name() const { return Whole.empty() ? Text : Whole; }
};

struct GraphAxis {
    std::string Caption;
    double Min = 0.0;
    double Max = 0.0;
    double Step = 1.0;
    std::vector<AxisLabel> Labels;  ///< in the order of their positions
};

/// A point of a series: a bar, a slice, or the upper bound of a layer. One that was never written has no numbers (NaN).
struct GraphPoint {
    double X = 0.0;
    double Y = 0.0;
    std::string Name{};  ///< of the category that it stands for, whole where that is known; empty: none
    bool IsMissing = false;  ///< it stands for missing data
};

/// The numbers of one series as the call gave them; see CAnalysisSupport::NewGeneralMultipleChartLongEx.
struct GraphSeries {
    std::string Name;
    int Kind = 0;  ///< see SeriesKind
    int AttributeB = 0;
    int AttributeC = 0;
    int Color = 0;  ///< see ChartColor
    double Width = 0.0;  ///< of a bar, in units of the x axis
    int Flags = 0;
    std::vector<GraphPoint> Points;
    std::vector<std::string> Labels;  ///< of the points, in their order; empty: none
};

/// A chart that an analysis hands over, as series over two axes.
struct SeriesChart {
    std::uint16_t Flags = 0;
    std::array<std::array<int, 3>, 3> Options{};  ///< three triples of option words
    GraphAxis X;
    GraphAxis Y;
    std::vector<GraphSeries> Series;
};

/// A bar for each category of a variable.
struct Histogram : SeriesChart {};

/// A slice for each category of a variable, and behind them one point at x = 0, which is no slice.
struct PieChart : SeriesChart {};

/// A column for each variable, divided into its categories. Point c of series j is the upper bound of layer j of column
/// c, in percent, from the top down, and the lower bound of layer j - 1; a column that doesn't reach a series has its
/// point at x = 0.
struct StackedPlot : SeriesChart {};

/// The box of one variable, or of one category of another, in a box-whisker plot.
struct BoxStatistics {
    std::string Variable;  ///< name; of a category, that of the category
    std::string LongName;  ///< may be empty
    std::int64_t Cases = 0;  ///< valid cases, those without a positive weight left out; 0: nothing is drawn
    double Middle = 0.0;  ///< median or mean
    double BoxLow = 0.0;
    double BoxHigh = 0.0;
    double WhiskerLow = 0.0;
    double WhiskerHigh = 0.0;
    std::vector<double> Outliers;  ///< ascending, each value once; beyond the whiskers, within 3 box lengths of the box
    std::vector<double> Extremes;  ///< ascending, each value once; farther out
    double WeightedCases = 0.0;  ///< sum of the weights of the cases; their number when no weight is in force
};

/// A box-whisker plot of one variable has a box for each category of another.
struct BoxGroups {
    std::string Variable;
    std::string LongName;  ///< may be empty
    std::string By;  ///< the variable of the categories
    std::string ByLongName;  ///< may be empty
    std::string Note;  ///< which cases are left out; may be empty
    std::int64_t LeftOut = 0;  ///< how many these are
};

struct BoxPlot {
    BoxType Type = BoxType::MeanSEAndSD;
    std::vector<BoxStatistics> Boxes;
    std::string Weight{};  ///< name of the variable that weights the cases; empty: none
    std::optional<BoxGroups> Groups{};  ///< nothing: a box for each variable
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
    /// Where each case lies between Min (0) and Max (1), one entry for each case of the plot; NaN: it isn't valid. All
    /// values of a constant lie at 0.5. Cells share these columns, and so do copies of the document.
    std::shared_ptr<const std::vector<float>> Places{};
};

/// The cell of two variables: the one of the row against the one of the column.
struct ScatterCell {
    std::int64_t Cases = 0;  ///< cases in which both are valid
    double Correlation = 0.0;  ///< Pearson's; NaN when it isn't defined, as of a constant
    double Intercept = 0.0;  ///< of the fitted line, y on x; NaN when the correlation isn't defined
    double Slope = 0.0;
    double LineAtMin = 0.0;  ///< the same line by places: that of y at place 0 of x
    double LineAtMax = 0.0;  ///< and at place 1
};

struct ScatterMatrix {
    std::uint16_t Flags = 0;  ///< 8: a histogram on the diagonal; 128: a fitted line in each cell
    std::vector<ScatterVariable> Variables;
    std::vector<ScatterCell> Cells;  ///< row by row, a square; the cells of the diagonal are empty
    std::string UnusedWeight{};  ///< name of the variable that weights the cases elsewhere, but not here; empty: none
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
    std::string UnusedWeight{};  ///< as that of a ScatterMatrix
    std::string CountName{"Number of counts"};  ///< what the counts are called
};

/// The cells of a cross table as tiles: a column for each category of one variable, as wide as its share of all,
/// divided into the shares of the categories of the other.
struct MosaicPlot {
    Histogram3DSide Columns;
    Histogram3DSide Layers;
    std::vector<double> Counts;  ///< column by column: that of a layer stands at column * |Layers.Labels| + layer
    std::string Note{};  ///< what else is to be known of the table; may be empty
};

/// What a graph shows. The first three are handed over by an analysis; the others are computed by the host from the
/// cases. Who shows graphs visits them all.
using GraphContent =
    std::variant<Histogram, PieChart, StackedPlot, BoxPlot, ScatterMatrix, Histogram3DPlot, MosaicPlot>;

/// A graph as plain data: all that the call of the analysis gave, or what the host has computed. All texts are whole:
/// no key of a long text is left in them, but in axis labels that were cut to their field.
struct GraphDocument {
    std::vector<std::string> Title;  ///< title lines up to the last that isn't empty; may hold line feeds
    Subject About;
    GraphContent Content;
};

/// What was handed over as series; null for a graph that the host has computed.
[[nodiscard]] const SeriesChart* SeriesOf(const GraphDocument& graph);

}  // namespace quillara
