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

/// Writes the same as a mosaic to a file.
void PaintCross(quillara::ScriptedAnalysis& analysis, const CutVariable& rows, const CutVariable& columns,
                const std::string& path);

/// The table of a variable's box plot by the categories of another, of a type by its word; written as a picture, too,
/// where a file is named.
[[nodiscard]] pybind11::tuple TellBoxes(quillara::ScriptedAnalysis& analysis, std::size_t variable,
                                        const CutVariable& by, const std::string& type, const std::string& path);
