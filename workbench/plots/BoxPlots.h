#pragma once

#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "workbench/documents/GraphDocument.h"
#include "workbench/plots/CaseColumns.h"
#include "workbench/plots/OrderStatistics.h"

namespace quillara {

/// What a box-whisker plot is made of.
struct BoxRequest {
    const DataTable& Table;
    std::vector<std::size_t> Variables;  ///< indexes in the table
    const PlotRows& Rows;
    BoxType Type = BoxType::MeanSEAndSD;
    CaseWeights Weights{};
    PartRunner Runner{};
};

/// The box-whisker plot of variables, each over its own valid values.
///
/// Median, quartiles, range: the box goes from the lower to the upper quartile, by linear interpolation between the
/// order statistics (definition 7 of Hyndman and Fan, Sample Quantiles in Statistical Packages, The American
/// Statistician 50, 1996). The whiskers reach the outermost values within 1.5 box lengths of the box; values beyond are
/// outliers, beyond 3 box lengths extremes (Tukey, Exploratory Data Analysis, 1977).
/// The others: mean, and once or 1.96 times the standard deviation or the standard error around it.
///
/// Under weights a case counts as so many equal cases: the same definitions over the sample in which it stands as often
/// as its weight says, of W = the sum of the weights cases. So the mean is sum(w x) / W, the deviation the root of
/// sum(w (x - mean)^2) / (W - 1), the error the deviation / sqrt(W), and the quantile p the interpolation at (W - 1) p
/// between the values at which the running sum of the weights passes the whole numbers on either side. Fractions are
/// taken as they are. Weights that sum to less than the number of cases, such as shares of 1, are scaled up to it.
[[nodiscard]] BoxPlot BoxPlotOf(const BoxRequest& request);

/// The box of some values, without a name.
[[nodiscard]] BoxStatistics BoxOf(const WeightedValues& sample, BoxType type);

inline constexpr double Quartiles[] = {0.25, 0.5, 0.75};

/// The quantiles of values, at least one, each of which stands as often as its weight says.
class SampleQuantiles {
  public:
    /// Finds those of some shares, from 0 to 1; no others can be asked for.
    explicit SampleQuantiles(const WeightedValues& sample, WeightedSize size = WeightedSize::NoFewerThanCases,
                             std::span<const double> shares = Quartiles);
    /// One of the shares.
    [[nodiscard]] double At(double share) const;

  private:
    void PutInOrder(const WeightedValues& sample, WeightedSize size);
    /// The values at a whole place from 0 in the sample, and at the next.
    [[nodiscard]] std::pair<double, double> ValuesAt(double place) const;
    [[nodiscard]] double WeightedValueAt(double place) const;

    std::optional<OrderStatistics> Unweighted;
    std::vector<double> Values;  // under weights: in ascending order
    std::vector<double> Reached;  // running sum of the weights
    double Size = 0.0;
};

}  // namespace quillara
