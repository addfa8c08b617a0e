#include "python/PythonStatistics.h"

#include <optional>

#include "python/HostCall.h"
#include "python/PythonDocuments.h"
#include "workbench/data/Errors.h"
#include "workbench/documents/BoxTypes.h"
#include "workbench/scripting/DocumentWriting.h"
#include "workbench/scripting/SubsetStatistics.h"

namespace py = pybind11;
using namespace quillara;

namespace {

py::list TellTables(const std::vector<SpreadsheetDocument>& tables) {
    py::list told;
    for (const SpreadsheetDocument& table : tables) {
        told.append(TellTable(table));
    }
    return told;
}

CrossVariable Wanted(const CutVariable& variable) {
    CrossVariable wanted{variable.first};
    if (!variable.second.empty()) {
        wanted.How = Cut{.Method = CutMethod::Bounds, .Bounds = variable.second};
    }
    return wanted;
}

BoxType BoxTypeNamed(const std::string& word) {
    for (const BoxTypeFacts& facts : BoxTypes) {
        if (facts.Word == word) {
            return facts.Type;
        }
    }
    throw UsageError("of is one of median, se, sd, 1.96se.");
}

}  // namespace

std::pair<double, double> TellCounted(ScriptedAnalysis& analysis) {
    const CountedCases counted = CallHost("each", [&] { return SubsetStatistics(analysis.Analysed()).Counted(); });
    return {static_cast<double>(counted.Cases), counted.Weight};
}

py::list TellDistributions(ScriptedAnalysis& analysis) {
    return TellTables(CallHost("distribution", [&] { return SubsetStatistics(analysis.Analysed()).Distributions(); }));
}

py::object TellDifferences(ScriptedAnalysis& analysis) {
    const std::optional<SpreadsheetDocument> table =
        CallHost("what_differs", [&] { return SubsetStatistics(analysis.Analysed()).WhatDiffers(); });
    return table ? py::object(TellTable(*table)) : py::object(py::none());
}

py::tuple TellCross(ScriptedAnalysis& analysis, const CutVariable& rows, const CutVariable& columns) {
    const CrossTable cross = CallHost(
        "crosstab", [&] { return SubsetStatistics(analysis.Analysed()).CrossOf(Wanted(rows), Wanted(columns)); });
    return py::make_tuple(TellTables(TablesOfCross(cross, {})), cross.Cases, cross.LeftOut, cross.ChiSquare,
                          cross.Freedom, cross.CramersV);
}

void PaintCross(ScriptedAnalysis& analysis, const CutVariable& rows, const CutVariable& columns,
                const std::string& path) {
    CallHost("crosstab", [&] {
        const SubsetStatistics statistics(analysis.Analysed());
        WritePicture(MosaicOf(statistics.CrossOf(Wanted(rows), Wanted(columns)), statistics.Weight()), path);
        return true;
    });
}

py::tuple TellBoxes(ScriptedAnalysis& analysis, std::size_t variable, const CutVariable& by, const std::string& type,
                    const std::string& path) {
    const GraphDocument graph = CallHost("box", [&] {
        GraphDocument made = SubsetStatistics(analysis.Analysed()).BoxesBy(variable, Wanted(by), BoxTypeNamed(type));
        if (!path.empty()) {
            WritePicture(made, path);
        }
        return made;
    });
    return TellTable(NumbersIn(graph));
}
