// The extension `_quillara`: what the package is made of.

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "host/GraphAutomation.h"
#include "platform/Status.h"
#include "python/HostCall.h"
#include "python/PythonAnalysis.h"
#include "python/PythonArrow.h"
#include "python/PythonDocuments.h"
#include "python/PythonEvents.h"
#include "python/PythonObject.h"
#include "python/PythonOutputs.h"
#include "python/PythonTable.h"
#include "workbench/hosting/LogFile.h"
#include "workbench/hosting/ScriptDesk.h"
#include "workbench/hosting/StatusTexts.h"

namespace py = pybind11;

namespace {

/// Sets quillara.Error as the exception of Python that is in flight. The standard message of what has been closed tells
/// nothing to people.
void Raise(const ScriptError& error) {
    const bool isClosed = error.Text == quillara::StandardMessage(CO_E_OBJNOTCONNECTED);
    const std::string text = isClosed ? "It has been closed and can't be used any more." : error.Text;
    const py::object type = py::module_::import("quillara._errors").attr("Error");
    const py::object made = type(static_cast<std::uint32_t>(error.Code), text, error.Member);
    PyErr_SetObject(type.ptr(), made.ptr());
}

void TranslateErrors(std::exception_ptr failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const ScriptError& error) {
        Raise(error);
    }
}

/// The messages behind the first `known` ones, as far as they are kept: texts, and codes of those that are remarks.
std::vector<std::pair<std::string, std::string>> MessagesBehind(std::size_t known) {
    return CallHost("messages", [known] {
        const auto& desk = quillara::TheScriptDesk();
        const auto& kept = desk.Messages();
        const std::size_t fresh = std::min(desk.MessagesSoFar() - known, kept.size());
        std::vector<std::pair<std::string, std::string>> messages;
        for (auto message = kept.end() - static_cast<std::ptrdiff_t>(fresh); message != kept.end(); ++message) {
            messages.emplace_back(message->Text, message->RemarkCode);
        }
        return messages;
    });
}

}  // namespace

PYBIND11_MODULE(_quillara, module) {
    module.doc() = "The host of the drill-down analysis; use the package quillara";
    quillara::OpenProgramLog();
    py::register_local_exception_translator(TranslateErrors);
    PythonObject::Define(module);
    PythonTable::Define(module);
    PythonAnalysis::Define(module);
    DefineDocuments(module);
    DefineArrow(module);
    DefineEvents(module);
    DefineOutputs(module);
    module.def("application", [] {
        return PythonObject::Wrap(
            CallHost("application", [] { return CountedPointer<IDispatch>::Adopt(OleAGetApplication()); }));
    });
    module.def("messages_so_far", [] { return quillara::TheScriptDesk().MessagesSoFar(); });
    module.def("messages_behind", MessagesBehind);
}
