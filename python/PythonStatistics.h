#pragma once

#include <pybind11/pybind11.h>

#include <cstddef>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "workbench/scripting/ScriptedAnalysis.h"

// Statistics of the cases that remain in an analysis, as what frames are made of (TellTable).

/// Of each table of groups side by side the names of the rows and the columns: variable, statistic, whether it is
/// whole, cells.
[[nodiscard]] pybind11::list TellGroups(quillara::ScriptedAnalysis& analysis,
                                        const std::vector<std::string>& variables);
/// The table of the continuous open and review variables, or that of a categorical one; None where it isn't open.
[[nodiscard]] pybind11::object TellDistribution(quillara::ScriptedAnalysis& analysis,
                                                std::optional<std::size_t> variable);
/// None where no case is dropped.
[[nodiscard]] pybind11::object TellDifferences(quillara::ScriptedAnalysis& analysis);

/// A variable of a cross table, by its place in the table, the bounds that it is cut at, or else the method; neither:
/// as it is.
using CutVariable = std::tuple<std::size_t, std::vector<double>, std::string>;

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
