#include "python/PythonOutputs.h"

#include <span>
#include <string>
#include <utility>
#include <vector>

#include "python/HostCall.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/scripting/ChartLibrary.h"
#include "workbench/scripting/FolderFiles.h"
#include "workbench/scripting/ScriptOutputs.h"
#include "workbench/scripting/TableFiles.h"
#include "workbench/views/DocumentViews.h"
#include "workbench/views/PlainCharts.h"

namespace py = pybind11;
using namespace quillara;

namespace {

std::string Painted(const GraphDocument& graph, PictureUse use) {
    ChartLook look;
    look.Dark = use == PictureUse::DarkPage;
    return PaintChart(graph, look, use == PictureUse::Workbook ? ChartFormat::Png : ChartFormat::Svg);
}

/// What a report says beside its documents.
struct ReportTexts {
    std::string Title;
    std::string Made;
    std::string Call;
};

/// The documents of all analyses, as drill shows them.
std::string Shown(OutputFormat format, const ReportTexts& report) {
    std::vector<OutputCollection> runs = ScriptOutputs::All();
    if (HasPictures(format)) {
        for (OutputCollection& run : runs) {
            run = Titled(std::move(run), {});
            run.Title = report.Title;
            run.Made = report.Made;
            run.Call = report.Call;
        }
    }
    return ViewOf(runs, format, Painted);
}

py::bytes Outputs(const std::string& format, const std::string& title, const std::string& made,
                  const std::string& call) {
    return CallHost("outputs", [&] { return Shown(FormatNamed(format), {title, made, call}); });
}

void Write(const std::string& path, const std::string& bytes) {
    ReplaceFile(path, bytes, [] { return HostScope::Cancelled().load(); });
}

void WriteOutputs(const std::string& format, const std::string& path, const std::string& title, const std::string& made,
                  const std::string& call) {
    CallHost("outputs", [&] {
        Write(path, Shown(FormatNamed(format), {title, made, call}));
        return true;
    });
}

/// Writes a file of each document; gives what has been replaced, as a line. The script stays as it is.
std::string WriteFolderOfOutputs(const std::string& format, const std::string& folder, const std::string& script) {
    return CallHost("outputs", [&] {
        const std::vector<OutputCollection> runs = ScriptOutputs::All();
        const std::vector<FolderFile> files = TableFiles(runs, FormatNamed(format));
        CheckTablesHitNoOther(folder, files, std::span(&script, 1));
        std::string replaced = WhatIsReplaced(folder, files);
        WriteFolder(folder, files, Write);
        return replaced;
    });
}

}  // namespace

void DefineOutputs(py::module_& module) {
    module.def("keep_outputs", ScriptOutputs::KeepFromNowOn, "Keeps the results of analyses that begin from now on");
    module.def("outputs", Outputs, "These results as a text of a format", py::arg("form"), py::arg("title") = "",
               py::arg("made") = "", py::arg("call") = "");
    module.def("write_outputs", WriteOutputs, "Writes them to a file", py::arg("form"), py::arg("path"),
               py::arg("title") = "", py::arg("made") = "", py::arg("call") = "");
    module.def("names_folder", NamesFolder, "Whether the name of an output means a folder");
    module.def("write_folder", WriteFolderOfOutputs, "Writes a file of each document");
}
