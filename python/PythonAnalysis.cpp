#include "python/PythonAnalysis.h"

#include <pybind11/stl.h>

#include "python/HostCall.h"
#include "python/PythonObject.h"
#include "python/PythonStatistics.h"
#include "workbench/hosting/AnalysisRemarks.h"

namespace py = pybind11;
using quillara::ScriptedAnalysis;

namespace {

/// Cases, weight, of how many cases, and of each step in force variable and category; None once it has closed.
py::object SubsetOf(ScriptedAnalysis& analysis) {
    const auto subset = CallHost("subset", [&analysis] { return analysis.Subset(); });
    if (!subset) {
        return py::none();
    }
    py::list steps;
    for (const quillara::StepTaken& step : subset->Steps) {
        steps.append(py::make_tuple(step.Variable, step.Category));
    }
    return py::make_tuple(subset->Left.Cases, subset->Left.Weight, subset->Of, steps);
}

/// How many cases there were before the first step, then behind each, None where they weren't counted.
std::vector<std::optional<std::int32_t>> SizesOf(ScriptedAnalysis& analysis) {
    return CallHost("to_frame", [&analysis] { return analysis.Sizes(); });
}

}  // namespace

PythonAnalysis::PythonAnalysis(const PythonTable& table, const std::string& formula, std::optional<std::size_t> weight)
    : Held(CallHost("drill", [&] {
          const quillara::CasesInForce cases{formula, weight, table.Notices, table.OnReading};
          return std::make_unique<ScriptedAnalysis>(table.Held, cases, HostScope::Cancelled());
      })) {}

PythonAnalysis::~PythonAnalysis() {
    const HostScope scope;
    Held.reset();
}

void PythonAnalysis::Define(py::module_& module) {
    py::class_<PythonAnalysis>(module, "Analysis", "A drill-down analysis; it closes when it is dropped")
        .def(py::init<const PythonTable&, const std::string&, std::optional<std::size_t>>())
        .def("dialog",
             [](PythonAnalysis& own) {
                 return PythonObject::Wrap(CallHost("drill", [&own] { return own.Held->Dialog(); }));
             })
        .def("analysis",
             [](PythonAnalysis& own) {
                 return PythonObject::Wrap(CallHost("analysis", [&own] { return own.Held->Analysis(); }));
             })
        .def("down",
             [](PythonAnalysis& own, std::size_t variable, const std::string& category) {
                 CallHost("down", [&] { return own.Held->Down(variable, category), true; });
             })
        .def("each", [](PythonAnalysis& own,
                        const std::vector<std::string>& variables) { return TellGroups(*own.Held, variables); })
        .def("distribution", [](PythonAnalysis& own,
                                std::optional<std::size_t> variable) { return TellDistribution(*own.Held, variable); })
        .def("differences", [](PythonAnalysis& own) { return TellDifferences(*own.Held); })
        .def("cross", [](PythonAnalysis& own, const CutVariable& rows,
                         const CutVariable& columns) { return TellCross(*own.Held, rows, columns); })
        .def("paint_cross", [](PythonAnalysis& own, const CutVariable& rows, const CutVariable& columns,
                               const std::string& path) { PaintCross(*own.Held, rows, columns, path); })
        .def("boxes", [](PythonAnalysis& own, std::size_t variable, const CutVariable& by, const std::string& type,
                         const std::string& path) { return TellBoxes(*own.Held, variable, by, type, path); })
        .def("remark",
             [](PythonAnalysis& own, const std::string& code, const std::string& text, const std::string& advice) {
                 CallHost("remark", [&] { return Notice(&own.Held->Analysed(), {code, text, advice}), true; });
             })
        .def("categorize",
             [](PythonAnalysis& own, std::size_t variable, const std::string& method) {
                 CallHost("categorize", [&] { return own.Held->Categorize(variable, method), true; });
             })
        .def("group",
             [](PythonAnalysis& own, std::size_t variable, const std::vector<std::string>& categories) {
                 const auto group = CallHost("down", [&] { return own.Held->Group(variable, categories); });
                 return py::make_tuple(group.Variable, group.Category);
             })
        .def("names", [](PythonAnalysis& own) { return CallHost("down", [&own] { return own.Held->Names(); }); })
        .def("sizes", [](PythonAnalysis& own) { return SizesOf(*own.Held); })
        .def("store_page",
             [](PythonAnalysis& own, const std::string& member) {
                 CallHost(member, [&own] { return own.Held->StorePage(), true; });
             })
        .def("steps", [](PythonAnalysis& own) { return CallHost("steps", [&own] { return own.Held->Steps(); }); })
        .def("subset", [](PythonAnalysis& own) { return SubsetOf(*own.Held); })
        .def("close", [](PythonAnalysis& own) { CallHost("close", [&own] { return own.Held->Close(), true; }); });
}
