#pragma once

#include <pybind11/pybind11.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "workbench/scripting/ScriptedAnalysis.h"

// Statistics of the cases that remain in an analysis, as what frames are made of (TellTable).

/// The number of cases that count, and the sum of their weights.
[[nodiscard]] std::pair<double, double> TellCounted(quillara::ScriptedAnalysis& analysis);
/// The table of the continuous open and review variables, if there are some, then that of each categorical one.
[[nodiscard]] pybind11::list TellDistributions(quillara::ScriptedAnalysis& analysis);
/// None where no case is dropped.
[[nodiscard]] pybind11::object TellDifferences(quillara::ScriptedAnalysis& analysis);

/// A variable of a cross table, by its place in the table, and the bounds that it is cut at; none: as it is.
using CutVariable = std::pair<std::size_t, std::vector<double>>;

/// The five tables, and what their titles say: cases, those left out, chi-square, its degrees of freedom, Cramer's V.
[[nodiscard]] pybind11::tuple TellCross(quillara::ScriptedAnalysis& analysis, const CutVariable& rows,
                                        const CutVariable& columns);
