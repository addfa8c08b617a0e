#pragma once

#include <vector>

#include "workbench/documents/GraphDocument.h"
#include "workbench/plots/CaseColumns.h"

namespace quillara {

/// The box-whisker plot of variables, by their indexes in the table, each over its own valid values.
///
/// Median, quartiles, range: the box goes from the lower to the upper quartile, by linear interpolation between the
/// order statistics (definition 7 of Hyndman and Fan, Sample Quantiles in Statistical Packages, The American
/// Statistician 50, 1996). The whiskers reach the outermost values within 1.5 box lengths of the box; values beyond are
/// outliers, beyond 3 box lengths extremes (Tukey, Exploratory Data Analysis, 1977).
/// The others: mean, and once or 1.96 times the standard deviation or the standard error around it.
[[nodiscard]] BoxPlot BoxPlotOf(const DataTable& table, const std::vector<std::size_t>& variables, const PlotRows& rows,
                                BoxType type);

/// The quantile of ascending or unordered values, at least one of them; `share` from 0 to 1. Reorders the values.
[[nodiscard]] double QuantileOf(std::vector<double>& values, double share);

}  // namespace quillara
