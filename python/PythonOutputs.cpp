#include "python/PythonOutputs.h"

#include <string>
#include <utility>
#include <vector>

#include "python/HostCall.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/scripting/ChartLibrary.h"
#include "workbench/scripting/ScriptOutputs.h"
#include "workbench/views/DocumentViews.h"
#include "workbench/views/PlainCharts.h"

namespace py = pybind11;
using namespace quillara;

namespace {

std::string Painted(const GraphDocument& graph, bool isDark) {
    ChartLook look;
    look.Dark = isDark;
    return PaintChart(graph, look, ChartFormat::Svg);
}

/// The documents of all analyses, as drill shows them.
std::string Shown(const std::string& format) {
    const OutputFormat chosen = FormatNamed(format);
    std::vector<OutputCollection> runs = ScriptOutputs::All();
    if (chosen == OutputFormat::Html) {
        for (OutputCollection& run : runs) {
            run = Titled(std::move(run), {});
        }
    }
    return ViewOf(runs, chosen, Painted);
}

py::bytes Outputs(const std::string& format) {
    return CallHost("outputs", [&format] { return Shown(format); });
}

void WriteOutputs(const std::string& format, const std::string& path) {
    CallHost("outputs", [&] {
        ReplaceFile(path, Shown(format), [] { return HostScope::Cancelled().load(); });
        return true;
    });
}

}  // namespace

void DefineOutputs(py::module_& module) {
    module.def("keep_outputs", ScriptOutputs::KeepFromNowOn, "Keeps the results of analyses that begin from now on");
    module.def("outputs", Outputs, "These results as a text of a format");
    module.def("write_outputs", WriteOutputs, "Writes them to a file");
}
