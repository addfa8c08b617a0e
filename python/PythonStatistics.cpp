#include "python/PythonStatistics.h"

#include <optional>

#include "python/HostCall.h"
#include "python/PythonDocuments.h"
#include "workbench/data/Errors.h"
#include "workbench/documents/BoxTypes.h"
#include "workbench/documents/ResultNames.h"
#include "workbench/scripting/DocumentWriting.h"
#include "workbench/scripting/SubsetStatistics.h"

namespace py = pybind11;
using namespace quillara;

namespace {

using Documents = std::vector<DocumentContent>;

py::list TellTables(const std::vector<SpreadsheetDocument>& tables) {
    py::list told;
    for (const SpreadsheetDocument& table : tables) {
        told.append(TellTable(table));
    }
    return told;
}

CrossVariable Wanted(ScriptedAnalysis& analysis, const CutVariable& variable) {
    const auto& [place, bounds, method] = variable;
    CrossVariable wanted{place};
    if (!bounds.empty()) {
        wanted.How = Cut{.Method = CutMethod::Bounds, .Bounds = bounds};
    } else if (!method.empty()) {
        wanted.How = analysis.CutBy(place, method);
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

py::tuple TellSideBySide(const SpreadsheetDocument& table) {
    const py::tuple told = TellTable(table);
    py::list columns;
    const py::list plain = told[1];
    for (std::size_t i = 0; i < table.Columns.size(); ++i) {
        const SpreadsheetColumn& column = table.Columns[i];
        const bool isOfVariable = !column.Variable.empty();
        columns.append(py::make_tuple(column.Variable, column.Category, isOfVariable ? column.Statistic : column.Name,
                                      column.Whole, py::tuple(plain[i])[2]));
    }
    return py::make_tuple(told[2], columns);
}

}  // namespace

py::list TellGroups(ScriptedAnalysis& analysis, const std::vector<std::string>& variables) {
    py::list told;
    for (const SpreadsheetDocument& table : CallHost("each", [&] { return analysis.Each(variables); })) {
        told.append(TellSideBySide(table));
    }
    return told;
}

py::object TellDistribution(ScriptedAnalysis& analysis, std::optional<std::size_t> variable) {
    const std::optional<SpreadsheetDocument> table = CallHost("distribution", [&] {
        auto found = SubsetStatistics(analysis.Analysed()).DistributionOf(variable);
        analysis.Keep(found ? Documents{*found} : Documents(), "distribution");
        return found;
    });
    return table ? py::object(TellTable(*table)) : py::object(py::none());
}

py::object TellDifferences(ScriptedAnalysis& analysis) {
    const std::optional<SpreadsheetDocument> table = CallHost("what_differs", [&] {
        auto found = SubsetStatistics(analysis.Analysed()).WhatDiffers();
        analysis.Keep(found ? Documents{*found} : Documents(), "what-differs");
        return found;
    });
    return table ? py::object(TellTable(*table)) : py::object(py::none());
}

py::tuple TellCross(ScriptedAnalysis& analysis, const CutVariable& rows, const CutVariable& columns) {
    const CrossTable cross = CallHost("crosstab", [&] {
        const SubsetStatistics statistics(analysis.Analysed());
        CrossTable found = statistics.CrossOf(Wanted(analysis, rows), Wanted(analysis, columns));
        const std::vector<SpreadsheetDocument> tables = TablesOfCross(found, statistics.Weight());
        analysis.Keep({tables.begin(), tables.end()}, "crosstab");
        analysis.Keep({MosaicOf(found, statistics.Weight())}, std::string(MosaicName));
        return found;
    });
    return py::make_tuple(TellTables(TablesOfCross(cross, {})), cross.Cases, cross.LeftOut, cross.ChiSquare,
                          cross.Freedom, cross.CramersV, cross.Chance,
                          py::make_tuple(cross.EffectiveCases, cross.EffectiveChance));
}

void PaintCross(ScriptedAnalysis& analysis, const CutVariable& rows, const CutVariable& columns,
                const std::string& path) {
    CallHost("crosstab", [&] {
        const SubsetStatistics statistics(analysis.Analysed());
        WritePicture(
            MosaicOf(statistics.CrossOf(Wanted(analysis, rows), Wanted(analysis, columns)), statistics.Weight()), path);
        return true;
    });
}

py::tuple TellBoxes(ScriptedAnalysis& analysis, std::size_t variable, const CutVariable& by, const std::string& type,
                    const std::string& path) {
    const GraphDocument graph = CallHost("box", [&] {
        GraphDocument made =
            SubsetStatistics(analysis.Analysed()).BoxesBy(variable, Wanted(analysis, by), BoxTypeNamed(type));
        if (!path.empty()) {
            WritePicture(made, path);
        }
        analysis.Keep({made}, "box-by-group");
        return made;
    });
    return TellTable(NumbersIn(graph));
}
